#include "ui/frm_manual_request.h"

#include <QCompleter>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalBlocker>

#include "ui/accessible_tree.h"
#include "ui/icons.h"
#include "ui/one_line.h"
#include "ui/place_beside.h"
#include "ui/qt_text.h"
#include "ui_frm_manual_request.h"

namespace brindle {
namespace {

constexpr QSize kFirstSize{420, 430};

}  // namespace

FrmManualRequest::FrmManualRequest(ManualRequest& manualRequest,
                                   const ObservedList<std::string>& handles,
                                   const QString& screenName, const QSize& size, QWidget* parent)
    : QWidget(parent, Qt::Window),
      ui_(std::make_unique<Ui::FrmManualRequest>()),
      manualRequest_(manualRequest) {
  setAttribute(Qt::WA_DeleteOnClose);
  ui_->setupUi(this);
  NameTextFields(*this);
  // It would put known handles in place of what is being typed.
  ui_->cmbRequestFrom->setCompleter(nullptr);
  KeepOneLine(*ui_->cmbRequestFrom->lineEdit());
  KeepOneLine(*ui_->txtRequest);
  KeepOneLine(*ui_->txtManualAOLSN);
  ui_->lstRequests->setHeaderLabels({"Server", "Mail #"});
  for (const std::string& handle : handles.Items()) {
    ui_->cmbRequestFrom->addItem(ToQString(handle));
  }
  ui_->txtManualAOLSN->setText(screenName);
  ui_->cmdAdd->setIcon(MakeIcon(IconName::kAdd));
  ui_->cmdRemove->setIcon(MakeIcon(IconName::kRemove));
  ui_->cmdClear->setIcon(MakeIcon(IconName::kClear));
  ui_->lblSuggestion->setForegroundRole(kDimText);
  ui_->lstRequests->setAlternatingRowColors(true);
  resize(size.isValid() ? size : kFirstSize);
  if (parent != nullptr) PlaceBeside(*this, *parent);
  ConnectButtons();
  manualRequest_.SetView(this);
  RowsChanged();
}

FrmManualRequest::~FrmManualRequest() {
  manualRequest_.Stop();
  manualRequest_.SetView(nullptr);
}

void FrmManualRequest::closeEvent(QCloseEvent* event) {
  emit Closing(isMaximized() ? normalGeometry().size() : size());
  QWidget::closeEvent(event);
}

void FrmManualRequest::ConnectButtons() {
  connect(ui_->cmdAdd, &QPushButton::clicked, this, [this] {
    manualRequest_.cmdAdd_Click(ui_->cmbRequestFrom->currentText().toStdString(),
                                ui_->txtRequest->text().toStdString());
  });
  connect(ui_->txtRequest, &QLineEdit::returnPressed, ui_->cmdAdd, &QPushButton::click);
  connect(ui_->cmdRemove, &QPushButton::clicked, this,
          [this] { manualRequest_.cmdRemove_Click(); });
  connect(ui_->cmdClear, &QPushButton::clicked, this, [this] { manualRequest_.cmdClear_Click(); });
  connect(ui_->cmdRequest, &QPushButton::clicked, this,
          [this] { manualRequest_.cmdRequest_Click(ui_->txtManualAOLSN->text().toStdString()); });
  connect(ui_->cmdReturn, &QPushButton::clicked, this, &QWidget::close);
  connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QWidget::close);
  connect(ui_->lstRequests, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
    const auto row = static_cast<size_t>(ui_->lstRequests->indexOfTopLevelItem(item));
    manualRequest_.SetChecked(row, item->checkState(0) == Qt::Checked);
  });
}

void FrmManualRequest::ReadyForNextNumber() {
  ui_->txtRequest->clear();
  ui_->txtRequest->setFocus();
}

void FrmManualRequest::RowsChanged() {
  const QSignalBlocker quiet(ui_->lstRequests);
  ui_->lstRequests->clear();
  for (const ManualRequest::Row& row : manualRequest_.Rows()) {
    auto* item =
        new QTreeWidgetItem(ui_->lstRequests, {ToQString(row.handle), ToQString(row.number)});
    item->setCheckState(0, row.checked ? Qt::Checked : Qt::Unchecked);
  }
  ui_->lstRequests->scrollToBottom();
}

}  // namespace brindle
