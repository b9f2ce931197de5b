#include "ui/frm_manual_request.h"

#include <QCompleter>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalBlocker>

#include "ui/accessible_tree.h"
#include "ui/one_line.h"
#include "ui/qt_text.h"
#include "ui_frm_manual_request.h"

namespace brindle {
namespace {

constexpr QSize kFirstSize{420, 430};
constexpr int kOffset = 40;  // from the top left of the main window

}  // namespace

FrmManualRequest::FrmManualRequest(ManualRequest& manualRequest,
                                   const ObservedList<std::string>& handles,
                                   const QString& screenName, QWidget* parent)
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
  resize(kFirstSize);
  if (parent != nullptr) move(parent->pos() + QPoint(kOffset, kOffset));
  ConnectButtons();
  manualRequest_.SetView(this);
  RowsChanged();
}

FrmManualRequest::~FrmManualRequest() {
  manualRequest_.Stop();
  manualRequest_.SetView(nullptr);
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
