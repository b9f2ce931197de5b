#include "ui/frm_updater.h"

#include "ui/qt_text.h"
#include "ui_frm_updater.h"

namespace brindle {
namespace {

constexpr QSize kFirstSize{420, 320};

// Progress is drawn this often at most; each drawing costs far more than a chunk does.
constexpr int kDrawMilliseconds = 20;

}  // namespace

FrmUpdater::FrmUpdater(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::FrmUpdater>()) {
  ui_->setupUi(this);
  setModal(true);
  resize(kFirstSize);
  drawn_.setSingleShot(true);
  drawn_.setInterval(kDrawMilliseconds);
  connect(&drawn_, &QTimer::timeout, this, [this] {
    if (const auto last = std::exchange(waiting_, std::nullopt)) {
      ShowTransfer(last->first, last->second);
    }
  });
}

FrmUpdater::~FrmUpdater() = default;

void FrmUpdater::Attach(Updater& updater) {
  updater_ = &updater;
  connect(ui_->cmdUpdate, &QPushButton::clicked, this, [this] { updater_->cmdUpdate_Click(); });
  connect(ui_->cmdClose, &QPushButton::clicked, this, [this] { updater_->cmdClose_Click(); });
}

void FrmUpdater::ShowModal() {
  updater_->Form_Load();
  show();
  if (!ui_->cmdUpdate->isEnabled()) ui_->cmdClose->setFocus();
}

void FrmUpdater::SetUpdateButton(UpdateCaption caption, bool enabled) {
  ui_->cmdUpdate->setText(caption == UpdateCaption::kUpdateCheck ? "&Update Check"
                                                                 : "&Download Update");
  ui_->cmdUpdate->setEnabled(enabled);
  // Disabled it gave the focus away; Enter is to take what is offered now.
  if (enabled) ui_->cmdUpdate->setFocus();
}

void FrmUpdater::SetStatus(const std::string& text) { ui_->lblStatus->setText(ToQString(text)); }

void FrmUpdater::SetNews(const std::string& text) { ui_->lblNews->setText(ToQString(text)); }

void FrmUpdater::SetProgressText(const std::string& text) {
  waiting_.reset();
  ui_->lblProgress->setText(ToQString(text));
}

void FrmUpdater::SetProgress(double percent) { ui_->barFileTransfer->setValue(qRound(percent)); }

void FrmUpdater::ShowTransfer(const std::string& text, double percent) {
  if (drawn_.isActive()) {
    waiting_.emplace(text, percent);
    return;
  }
  SetProgressText(text);
  SetProgress(percent);
  drawn_.start();
}

void FrmUpdater::Unload() { hide(); }

void FrmUpdater::reject() { updater_->cmdClose_Click(); }

}  // namespace brindle
