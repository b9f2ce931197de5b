#include "ui/frm_results.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QShortcut>

#include "base/twips.h"
#include "ui/accessible_tree.h"
#include "ui/icons.h"
#include "ui/mail_list_model.h"
#include "ui/place_beside.h"
#include "ui/qt_text.h"
#include "ui_frm_results.h"

namespace brindle {
namespace {

constexpr int kLargestSize = 10000;  // pixels; a size beyond is a fault of the settings

int Pixels(int twips) { return qBound(0, twips / kTwipsPerPixel, kLargestSize); }

}  // namespace

FrmResults::FrmResults(Results& results, SelectMenu& mnuSelect, QWidget* parent)
    : QWidget(parent, Qt::Window), ui_(std::make_unique<Ui::FrmResults>()), results_(results) {
  setAttribute(Qt::WA_DeleteOnClose);
  ui_->setupUi(this);
  NameTextFields(*this);
  ui_->cmdSearch->setIcon(MakeIcon(IconName::kFind));
  ui_->cmdSelect->setIcon(MakeIcon(IconName::kCheck));
  ui_->cmbSearch->Attach(results.RememberedSearches());
  ui_->lstResults->Attach(results.Found());
  ConnectControls(mnuSelect);
  TakeGeometry(results_.Form_Load(*this));
  if (parent != nullptr) PlaceBeside(*this, *parent);
  ui_->cmbSearch->lineEdit()->selectAll();
  ui_->cmbSearch->setFocus();
}

FrmResults::~FrmResults() { results_.Form_Unload(); }

void FrmResults::ConnectControls(SelectMenu& mnuSelect) {
  connect(ui_->cmdSearch, &QPushButton::clicked, this,
          [this] { results_.cmdSearch_Click(ui_->cmbSearch->currentText().toStdString()); });
  connect(ui_->cmbSearch->lineEdit(), &QLineEdit::returnPressed, ui_->cmdSearch,
          &QPushButton::click);
  connect(ui_->cmdSelected, &QPushButton::clicked, this, [this] { results_.cmdSelected_Click(); });
  connect(ui_->cmdAll, &QPushButton::clicked, this, [this] { results_.cmdAll_Click(); });
  mnuSelect.ServeResults(results_.Found(), *ui_->cmdSelect);
  connect(ui_->cmdReturn, &QPushButton::clicked, this, &QWidget::close);
  connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QWidget::close);
}

ResultsGeometry FrmResults::Geometry() const {
  const MailTable& table = *ui_->lstResults;
  const bool plain = (windowState() & (Qt::WindowMinimized | Qt::WindowMaximized)) == 0;
  const QSize shown = plain ? size() : normalGeometry().size();
  return {shown.height() * kTwipsPerPixel, shown.width() * kTwipsPerPixel,
          table.columnWidth(MailListModel::kNumber) * kTwipsPerPixel,
          table.columnWidth(MailListModel::kTitle) * kTwipsPerPixel};
}

void FrmResults::TakeGeometry(const ResultsGeometry& geometry) {
  resize(Pixels(geometry.width), Pixels(geometry.height));
  if (geometry.column1 > 0) {
    ui_->lstResults->setColumnWidth(MailListModel::kNumber, Pixels(geometry.column1));
  }
  if (geometry.column2 > 0) {
    ui_->lstResults->setColumnWidth(MailListModel::kTitle, Pixels(geometry.column2));
  }
}

void FrmResults::closeEvent(QCloseEvent* event) {
  event->setAccepted(results_.cmdReturn_Click(Geometry()));
}

void FrmResults::SetSearchText(const std::string& text) {
  ui_->cmbSearch->setEditText(ToQString(text));
}

void FrmResults::SetSearchCaption(const std::string& text) {
  ui_->fmeSearch->setTitle(ToQString(text));
}

void FrmResults::EnableSearch(bool enabled) {
  ui_->cmbSearch->setEnabled(enabled);
  ui_->cmdSearch->setEnabled(enabled);
}

void FrmResults::EnableSending(bool enabled) {
  ui_->cmdAll->setEnabled(enabled);
  ui_->cmdSelected->setEnabled(enabled);
}

void FrmResults::SetCounts(size_t searched, size_t matches, TickCount milliseconds) {
  ui_->lblSearchedThrough->setText(QString::number(searched));
  ui_->lblSearchMatches->setText(QString::number(matches));
  ui_->lblSearchTime->setText(QString::number(milliseconds));
}

void FrmResults::FocusSearch() { ui_->cmbSearch->setFocus(); }

}  // namespace brindle
