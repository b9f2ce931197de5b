#pragma once
// frmUpdater, the update window: shows what the updater tells, and passes on its two buttons.

#include <QDialog>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "update/updater.h"

namespace Ui {
class FrmUpdater;
}

namespace brindle {

class FrmUpdater : public QDialog, public UpdateView {
  Q_OBJECT

 public:
  explicit FrmUpdater(QWidget* parent);
  ~FrmUpdater() override;

  void Attach(Updater& updater);

  // Opens the window over its parent, which rests until it is closed. Returns at once.
  void ShowModal();

  void SetUpdateButton(UpdateCaption caption, bool enabled) override;
  void SetStatus(const std::string& text) override;
  void SetNews(const std::string& text) override;
  void SetProgressText(const std::string& text) override;
  void SetProgress(double percent) override;
  void ShowTransfer(const std::string& text, double percent) override;
  void Unload() override;

  // Every way of closing the window is the Close button's.
  void reject() override;

 private:
  std::unique_ptr<Ui::FrmUpdater> ui_;
  Updater* updater_ = nullptr;
  // Runs after a drawing of the progress; what is told meanwhile waits in `waiting_`.
  QTimer drawn_;
  std::optional<std::pair<std::string, double>> waiting_;
};

}  // namespace brindle
