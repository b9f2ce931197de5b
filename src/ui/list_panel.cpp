#include "ui/list_panel.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QShortcut>
#include <QSignalBlocker>
#include <algorithm>

#include "ui/icons.h"
#include "ui/look.h"
#include "ui/mail_list_model.h"
#include "ui/one_line.h"
#include "ui/pop_up.h"
#include "ui/qt_text.h"
#include "ui_list_panel.h"

namespace brindle {
namespace {

constexpr int kFilterWidth = 210;
constexpr int kFieldWidth = 150;
constexpr int kLeastFieldWidth = 95;
constexpr int kRunLabelWidth = 170;

// One row where there is room, else two.
void Arrange(QBoxLayout& layout, bool inOneRow) {
  layout.setDirection(inOneRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

}  // namespace

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
  for (QLineEdit* field : {ui_->txtListFilter, ui_->txtListServer, ui_->txtListAOLSN}) {
    KeepOneLine(*field);
  }
  BuildFilter();
  mnuLoadList_.setObjectName("mnuLoadList");
  connect(ui_->txtListAOLSN, &QLineEdit::textEdited, this, &ListPanel::ScreenNameEdited);
}

ListPanel::~ListPanel() = default;

void ListPanel::BuildFilter() {
  QLineEdit& filter = *ui_->txtListFilter;
  filter.addAction(MakeIcon(IconName::kFilter, LookRole::kDim), QLineEdit::LeadingPosition);
  QAction* clear =
      filter.addAction(MakeIcon(IconName::kClear, LookRole::kDim), QLineEdit::TrailingPosition);
  clear->setText("Show all mails");
  clear->setVisible(false);
  connect(clear, &QAction::triggered, &filter, &QLineEdit::clear);
  connect(&filter, &QLineEdit::textChanged, this, [this, clear](const QString& text) {
    clear->setVisible(!text.isEmpty());
    if (list_ != nullptr) ui_->lstServerList->Filter(text);
  });
  filter.installEventFilter(this);
}

bool ListPanel::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed = event->type() == QEvent::KeyPress;
  if (watched == ui_->txtListFilter && (pressed || event->type() == QEvent::ShortcutOverride)) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool back = key == Qt::Key_Escape;
    if (back || key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
      event->accept();
      if (!pressed) return true;
      if (back) ui_->txtListFilter->clear();
      ui_->lstServerList->setFocus(Qt::OtherFocusReason);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

QSize ListPanel::minimumSizeHint() const {
  int width = 0;
  for (const QLayout* row : {ui_->buttonsLayout, ui_->fieldsLayout, ui_->runLayout}) {
    width = std::max(width, row->minimumSize().width());
  }
  const QMargins margins = ui_->toolLayout->contentsMargins();
  return {width + margins.left() + margins.right(), QWidget::minimumSizeHint().height()};
}

void ListPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitRows();
}

void ListPanel::FitRows() {
  const int room = contentsRect().width() - 2 * kInset;
  int tools = kFilterWidth;
  for (const QWidget* button :
       {ui_->cmdLoadList, ui_->cmdSelect, ui_->cmdFind, ui_->cmdManualRequest}) {
    tools += button->sizeHint().width() + kGap;
  }
  const bool toolsFit = room >= tools;
  Arrange(*ui_->toolLayout, toolsFit);
  ui_->buttonsLayout->setSpacing(toolsFit ? kGap : kSmallGap);
  ui_->txtListFilter->setMaximumWidth(toolsFit ? kFilterWidth : QWIDGETSIZE_MAX);

  int footer = 2 * kLeastFieldWidth + 6 * kGap;
  for (const QWidget* widget : std::initializer_list<const QWidget*>{
           ui_->lblListServer, ui_->lblListAOLSN, ui_->cmdRequest}) {
    footer += widget->sizeHint().width();
  }
  // A run needs room for its button, a long list with a filter for what is said of it.
  const int said = run_ ? 0 : ui_->lblRun->sizeHint().width();
  const int run = kRunLabelWidth + ui_->cmdRequestStop->sizeHint().width();
  const bool footerFits = room >= footer + std::max(said, run);
  Arrange(*ui_->footerLayout, footerFits);
  const int spare = run_ ? 0 : (room - footer - said) / 2;
  const int width = std::clamp(kLeastFieldWidth + spare, kLeastFieldWidth, kFieldWidth);
  for (QLineEdit* field : {ui_->txtListServer, ui_->txtListAOLSN}) {
    field->setMaximumWidth(footerFits ? width : QWIDGETSIZE_MAX);
  }
}

void ListPanel::Attach(MailList& list, ListLoader& loader, ListSelection& selection,
                       Requests& requests) {
  list_ = &list;
  loader_ = &loader;
  selection_ = &selection;
  ui_->lstServerList->horizontalHeader()->hide();  // until there is a list
  ui_->lstServerList->Attach(list);
  const auto* model = ui_->lstServerList->model();
  // It is told of checks on hidden rows too.
  connect(model, &QAbstractItemModel::headerDataChanged, this, &ListPanel::RefreshRunLabel);
  connect(model, &QAbstractItemModel::modelReset, this, &ListPanel::RowsReset);
  connect(model, &QAbstractItemModel::rowsInserted, this, &ListPanel::RefreshRunLabel);
  connect(ui_->cmdRequestStop, &QPushButton::clicked, this, &ListPanel::StopClicked);
  connect(ui_->lstServerList, &MailTable::MouseUp, this, &ListPanel::ShiftClick);
  ui_->lstServerList->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(ui_->lstServerList, &QWidget::customContextMenuRequested, this,
          [this, &requests](const QPoint& place) { ShowRowMenu(place, requests); });
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
  ShowEmptyState();
}

void ListPanel::BuildMenus(ListLoader& loader, ListSelection& selection) {
  mnuLoadList_.setToolTipsVisible(true);
  connect(&mnuLoadList_, &QMenu::aboutToShow, this, &ListPanel::ShowRecent);
  GiveMenu(*ui_->cmdLoadList, mnuLoadList_);
  AddMenuItem(mnuLoadList_, "mnuLoadListFile", "From &File",
              [&loader] { loader.mnuLoadListFile_Click(); });
  AddMenuItem(mnuLoadList_, "mnuLoadListWeb", "From &Web",
              [&loader] { loader.mnuLoadListWeb_Click(); });

  mnuSelect_.Attach(selection, *list_);
  mnuSelect_.ServeMain(*ui_->cmdSelect);
}

void ListPanel::ShowRecent() {
  qDeleteAll(std::exchange(recent_, {}));
  for (const std::string& stored : loader_->Recent()) {
    if (recent_.isEmpty()) recent_ << mnuLoadList_.addSeparator();
    const QString path = ToQString(stored);
    const auto place = recent_.size();
    const QString name = QFileInfo(path).fileName().replace('&', "&&");
    const QString text = QString("&%1  %2").arg(place).arg(name);
    QAction* item = mnuLoadList_.addAction(text);
    item->setObjectName(QString("mnuLoadListRecent_%1").arg(place - 1));
    item->setToolTip(QDir::toNativeSeparators(path));
    connect(item, &QAction::triggered, this, [this, path] { OpenFile(path); });
    recent_ << item;
  }
}

void ListPanel::OpenFile(const QString& path) {
  if (loader_ != nullptr) loader_->OpenFile(path.toStdString());
}

void ListPanel::BuildNote() {
  barNote_ = new QWidget(this);
  barNote_->setObjectName("barListNote");
  lblNote_ = new QLabel(barNote_);
  lblNote_->setObjectName("lblListNote");
  lblNote_->setTextFormat(Qt::PlainText);
  lblNote_->setWordWrap(true);
  auto* undo = new QPushButton("Undo", barNote_);
  undo->setShortcut(QKeySequence::Undo);  // all its letters are taken on this screen
  undo->setObjectName("cmdListUndo");
  undo->setAutoDefault(true);
  undo->setToolTip("Brings back the list that was there before, with its checks (Ctrl+Z).");
  auto* row = new QHBoxLayout(barNote_);
  row->setContentsMargins(kInset, 0, kInset, kGap);
  row->addWidget(lblNote_, 1);
  row->addWidget(undo);
  connect(undo, &QPushButton::clicked, this, [this] { loader_->Undo(); });
  barNote_->setFocusProxy(undo);
  ui_->panelLayout->insertWidget(1, barNote_);
}

void ListPanel::ShowNote(const ListNote& note) {
  note_ = ToQString(note.text);
  const bool canUndo = note.canUndo && !note_.isEmpty();
  if (canUndo && barNote_ == nullptr) BuildNote();
  if (barNote_ != nullptr) {
    lblNote_->setText(note_);
    barNote_->setVisible(canUndo);
    if (canUndo) barNote_->setFocus(Qt::OtherFocusReason);
  }
  if (!note_.isEmpty()) emit Hint(note_);
  ShowEmptyState();
}

void ListPanel::ShowEmptyState() {
  const QString how =
      "Open a server's list with Load Server List, or drop the file here.\n"
      "Ask a server for its list with Commands, Request List, on Info / Commands.";
  ui_->lstServerList->SetEmptyText(note_.isEmpty() ? "No list loaded" : note_, how);
  // From Web leaves the total of the list that was there.
  const bool hasHeader = list_->Size() > 0 || list_->TitleHeader() != "Mail Title [0/0]";
  ui_->lstServerList->horizontalHeader()->setVisible(hasHeader);
}

void ListPanel::ShowRowMenu(const QPoint& place, Requests& requests) {
  MailTable& table = *ui_->lstServerList;
  if (table.ChosenRows().empty()) return;
  if (mnuRows_ == nullptr) {
    mnuRows_ = new QMenu("Mails", this);
    AddMenuItem(*mnuRows_, "mnuRowsCheck", "&Check", [&table] { table.CheckChosen(true); });
    AddMenuItem(*mnuRows_, "mnuRowsUncheck", "&Uncheck", [&table] { table.CheckChosen(false); });
    AddMenuItem(*mnuRows_, "mnuRowsCopy", "C&opy", [&table] { table.CopyChosen(); });
    mnuRows_->addSeparator();
    AddMenuItem(*mnuRows_, "mnuRowsRequest", "&Request", [this, &table, &requests] {
      requests.RequestRows(table.ChosenRows(), ui_->txtListAOLSN->text().toStdString(),
                           ui_->txtListServer->text().toStdString());
    });
  }
  mnuRows_->popup(table.viewport()->mapToGlobal(place));
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

void ListPanel::FocusFilter() {
  ui_->txtListFilter->setFocus(Qt::ShortcutFocusReason);
  ui_->txtListFilter->selectAll();
}

void ListPanel::RowsReset() {
  if (std::exchange(generation_, list_->Generation()) != list_->Generation()) {
    ui_->txtListFilter->clear();
  }
  ShowEmptyState();
  RefreshRunLabel();
}

QString ListPanel::ScreenName() const { return ui_->txtListAOLSN->text(); }

void ListPanel::SetScreenName(const QString& name) { ui_->txtListAOLSN->setText(name); }

void ListPanel::ShowRun(const std::optional<RunProgress>& progress) {
  if (progress && !run_) sinceRunBegan_.start();
  const bool goes = progress.has_value();
  if (std::exchange(run_, progress).has_value() != goes) FitRows();
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
    QString text;
    if (list_->Size() > 0) {
      text = QString("%1 of %2 checked").arg(list_->CheckedCount()).arg(list_->Size());
    }
    const MailListModel& shown = ui_->lstServerList->Model();
    if (shown.IsFiltered()) text += QString(", %1 shown").arg(shown.rowCount());
    ui_->lblRun->setText(text);
    return FitRows();
  }
  QString text = QString("Line %1 of %2").arg(run_->sent).arg(run_->lines);
  if (run_->sent >= run_->lines) {
    text += ", waiting for the server";
  } else if (run_->sent > 1) {
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
  if (shown && list_->Size() > 0) ui_->lstServerList->setFocus(Qt::OtherFocusReason);
}

void ListPanel::SetListServer(const std::string& handle) {
  ui_->txtListServer->setText(ToQString(handle));
}

std::string ListPanel::ListServer() const { return ui_->txtListServer->text().toStdString(); }

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
