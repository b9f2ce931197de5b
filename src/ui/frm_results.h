#pragma once
// frmResults: the search window.

#include <QWidget>
#include <functional>
#include <memory>

#include "mail/list_selection.h"
#include "mail/results.h"

namespace Ui {
class FrmResults;
}

namespace brindle {

class FrmResults : public QWidget, private ResultsView {
  Q_OBJECT

 public:
  // Shows the Select menu for `target` under a button.
  using PopUpSelect = std::function<void(const SelectTarget& target, const QWidget& button)>;

  // The window deletes itself when closed.
  FrmResults(Results& results, ListSelection& selection, PopUpSelect popUpSelect, QWidget* parent);
  ~FrmResults() override;

  ResultsGeometry Geometry() const;

 protected:
  // Closing in whatever way is the same as the Return button.
  void closeEvent(QCloseEvent* event) override;

 private:
  void SetTitleHeader(const std::string& text) override;
  void SetSearchText(const std::string& text) override;
  void SetSearchCaption(const std::string& text) override;
  void EnableSearch(bool enabled) override;
  void EnableSending(bool enabled) override;
  void SetCounts(size_t searched, size_t matches, TickCount milliseconds) override;
  void FocusSearch() override;

  void ConnectControls(PopUpSelect popUpSelect);
  void TakeGeometry(const ResultsGeometry& geometry);
  SelectTarget Target();

  std::unique_ptr<Ui::FrmResults> ui_;
  Results& results_;
  ListSelection& selection_;
};

}  // namespace brindle
