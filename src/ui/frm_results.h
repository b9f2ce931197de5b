#pragma once
// frmResults: the search window.

#include <QWidget>
#include <memory>

#include "mail/results.h"
#include "ui/select_menu.h"

namespace Ui {
class FrmResults;
}

namespace brindle {

class FrmResults : public QWidget, private ResultsView {
  Q_OBJECT

 public:
  // The window deletes itself when closed.
  FrmResults(Results& results, SelectMenu& mnuSelect, QWidget* parent);
  ~FrmResults() override;

  // The sizes to come back with: those that the window has while it is neither minimised nor
  // maximised.
  ResultsGeometry Geometry() const;

 protected:
  // Closing in whatever way is the same as the Return button.
  void closeEvent(QCloseEvent* event) override;

 private:
  void SetSearchText(const std::string& text) override;
  void SetSearchCaption(const std::string& text) override;
  void EnableSearch(bool enabled) override;
  void EnableSending(bool enabled) override;
  void SetCounts(size_t searched, size_t matches, TickCount milliseconds) override;
  void FocusSearch() override;

  void ConnectControls(SelectMenu& mnuSelect);
  void TakeGeometry(const ResultsGeometry& geometry);

  std::unique_ptr<Ui::FrmResults> ui_;
  Results& results_;
};

}  // namespace brindle
