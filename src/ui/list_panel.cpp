#include "ui/list_panel.h"

#include <QShortcut>

#include "ui/icons.h"
#include "ui/one_line.h"
#include "ui/pop_up.h"
#include "ui/qt_text.h"
#include "ui_list_panel.h"

namespace brindle {

ListPanel::ListPanel(QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::ListPanel>()),
      mnuLoadList_("Load List", this),
      mnuSelect_(this) {
  ui_->setupUi(this);
  ui_->cmdRequestStop->setIcon(MakeIcon(IconName::kStop, LookRole::kBad));
  ui_->cmdLoadList->setIcon(MakeIcon(IconName::kLoad));
  ui_->cmdSelect->setIcon(MakeIcon(IconName::kCheck));
  ui_->cmdFind->setIcon(MakeIcon(IconName::kFind));
  ui_->cmdManualRequest->setIcon(MakeIcon(IconName::kManual));
  for (QLineEdit* field : {ui_->txtListServer, ui_->txtListAOLSN}) {
    KeepOneLine(*field);
  }
  mnuLoadList_.setObjectName("mnuLoadList");
  connect(ui_->txtListAOLSN, &QLineEdit::textEdited, this, &ListPanel::ScreenNameEdited);
}

ListPanel::~ListPanel() = default;

void ListPanel::Attach(MailList& list, ListLoader& loader, ListSelection& selection,
                       Requests& requests) {
  list_ = &list;
  selection_ = &selection;
  ui_->lstServerList->Attach(list);
  const auto* model = ui_->lstServerList->model();
  connect(model, &QAbstractItemModel::dataChanged, this, &ListPanel::RefreshRunLabel);
  connect(model, &QAbstractItemModel::modelReset, this, &ListPanel::RefreshRunLabel);
  connect(ui_->cmdRequestStop, &QPushButton::clicked, this, &ListPanel::StopClicked);
  connect(ui_->lstServerList, &MailTable::MouseUp, this, &ListPanel::ShiftClick);
  // Where the list has the focus; elsewhere the key searches something else.
  auto* find = new QShortcut(QKeySequence::Find, ui_->lstServerList);
  find->setContext(Qt::WidgetShortcut);
  connect(find, &QShortcut::activated, ui_->cmdFind, &QPushButton::click);
  connect(ui_->cmdFind, &QPushButton::clicked, this, &ListPanel::FindClicked);
  connect(ui_->cmdManualRequest, &QPushButton::clicked, this, &ListPanel::ManualRequestClicked);
  connect(ui_->cmdRequest, &QPushButton::clicked, this, [this, &requests] {
    requests.cmdRequest_Click(ui_->txtListAOLSN->text().toStdString(),
                              ui_->txtListServer->text().toStdString());
  });
  BuildMenus(loader, selection);
}

void ListPanel::BuildMenus(ListLoader& loader, ListSelection& selection) {
  GiveMenu(*ui_->cmdLoadList, mnuLoadList_);
  AddMenuItem(mnuLoadList_, "mnuLoadListFile", "From &File",
              [&loader] { loader.mnuLoadListFile_Click(); });
  AddMenuItem(mnuLoadList_, "mnuLoadListWeb", "From &Web",
              [&loader] { loader.mnuLoadListWeb_Click(); });

  mnuSelect_.Attach(selection, *list_);
  connect(ui_->cmdSelect, &QPushButton::clicked, this,
          [this] { mnuSelect_.PopUpForMain(*ui_->cmdSelect); });
}

void ListPanel::SetColours(std::optional<Colour> text, std::optional<Colour> background) {
  ui_->lstServerList->SetColours(text, background);
}

void ListPanel::LoadFromFile() {
  if (ui_->cmdLoadList->isEnabled()) mnuLoadList_.actions().first()->trigger();
}

void ListPanel::Find() { ui_->cmdFind->click(); }

bool ListPanel::StopRun() {
  if (run_) emit StopClicked();
  return run_.has_value();
}

QString ListPanel::ScreenName() const { return ui_->txtListAOLSN->text(); }

void ListPanel::SetScreenName(const QString& name) { ui_->txtListAOLSN->setText(name); }

void ListPanel::ShowRun(const std::optional<RunProgress>& progress) {
  if (progress && !run_) sinceRunBegan_.start();
  run_ = progress;
  ui_->barRun->setVisible(run_.has_value());
  ui_->cmdRequestStop->setVisible(run_.has_value());
  if (run_) {
    ui_->barRun->setMaximum(static_cast<int>(run_->lines));
    ui_->barRun->setValue(static_cast<int>(run_->sent));
  }
  RefreshRunLabel();
}

void ListPanel::RefreshRunLabel() {
  if (!run_) {
    ui_->lblRun->setText(
        list_->Size() == 0
            ? QString()
            : QString("%1 of %2 checked").arg(list_->CheckedCount()).arg(list_->Size()));
    return;
  }
  QString text = QString("Line %1 of %2").arg(run_->sent).arg(run_->lines);
  if (run_->sent > 1) {
    const auto sent = static_cast<qint64>(run_->sent);
    const auto left = static_cast<qint64>(run_->lines) - sent;
    const qint64 seconds = sinceRunBegan_.elapsed() * left / (sent - 1) / 1000;
    text += QString(", %1:%2 left").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar('0'));
  }
  ui_->lblRun->setText(text);
}

void ListPanel::EnableListButtons(bool enabled) {
  for (QPushButton* button : {ui_->cmdSelect, ui_->cmdRequest, ui_->cmdFind, ui_->cmdLoadList}) {
    button->setEnabled(enabled);
  }
}

void ListPanel::ShowList(bool shown) {
  ui_->lstServerList->setVisible(shown);
  ui_->lblLoadList->setVisible(!shown);
}

void ListPanel::SetListServer(const std::string& handle) {
  ui_->txtListServer->setText(ToQString(handle));
}

void ListPanel::ShiftClick(Qt::KeyboardModifiers held) {
  const Modifiers modifiers{held.testFlag(Qt::ShiftModifier), held.testFlag(Qt::ControlModifier),
                            held.testFlag(Qt::AltModifier)};
  const Marking marking =
      selection_->lstServerList_MouseUp(*list_, modifiers, ui_->lstServerList->HighlightedRows());
  if (marking == Marking::kCutShort) {
    emit Hint(
        "Shift+click reaches the first 32767 rows; press Space to check all highlighted rows.");
  }
}

}  // namespace brindle
