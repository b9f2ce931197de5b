#include "ui/who_panel.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QShortcut>

#include "irc/nick_words.h"
#include "ui/look.h"
#include "ui/observed_list_model.h"
#include "ui/pop_up.h"
#include "ui/qt_text.h"
#include "ui_who_panel.h"

namespace brindle {

WhoPanel::WhoPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::WhoPanel>()) {
  ui_->setupUi(this);
  ui_->lstWho->viewport()->setAutoFillBackground(false);
}

WhoPanel::~WhoPanel() = default;

void WhoPanel::Attach(WhoList& who) {
  auto* model = new ObservedListModel(who.Nicks(), this);
  model->SetLook([this, &who](std::string_view entry, int role) {
    return LookOf(entry, who.IsAway(entry), role);
  });
  ShowIn(*ui_->lstWho, *model);
  connect(ui_->lstWho, &QListView::doubleClicked, this, &WhoPanel::Message);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(QKeySequence(key), ui_->lstWho);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, &WhoPanel::Message);
  }
  connect(ui_->lstWho, &QWidget::customContextMenuRequested, this, &WhoPanel::ShowMenu);
  const auto refresh = [this, &who] { ui_->lblWhoshere->setText(ToQString(who.Caption())); };
  connect(model, &QAbstractItemModel::rowsInserted, this, refresh);
  connect(model, &QAbstractItemModel::rowsRemoved, this, refresh);
  connect(model, &QAbstractItemModel::modelReset, this, refresh);
}

QString WhoPanel::Selected() const {
  const std::string entry = ui_->lstWho->currentIndex().data().toString().toStdString();
  return ToQString(WithoutStatusMarks(entry));
}

QVariant WhoPanel::LookOf(std::string_view entry, bool isAway, int role) const {
  const char mark = entry.empty() ? ' ' : entry.front();
  if (role == Qt::AccessibleDescriptionRole) {
    const QString rank = mark == '@' ? "Operator" : mark == '+' ? "May speak" : "";
    return isAway ? rank + (rank.isEmpty() ? "Away" : ", away") : rank;
  }
  if (isAway && role == Qt::ForegroundRole) return ColourOf(LookRole::kDim);
  if (isAway && role == Qt::ToolTipRole) return QString("Away");
  if (role != Qt::DecorationRole) return {};
  return mark == '@' ? operator_ : mark == '+' ? voice_ : person_;
}

void WhoPanel::Message() {
  if (const QString nick = Selected(); !nick.isEmpty()) emit MessageWanted(nick);
}

void WhoPanel::ShowMenu(QPoint at) {
  const QString nick = Selected();
  if (nick.isEmpty()) return;
  auto* menu = new QMenu(this);
  menu->setObjectName("mnuWho");
  menu->setAttribute(Qt::WA_DeleteOnClose);
  AddMenuItem(*menu, "mnuWhoMessage", "&Message", [this] { Message(); });
  AddMenuItem(*menu, "mnuWhoServer", "&Use as Server", [this, nick] { emit ServerWanted(nick); });
  AddMenuItem(*menu, "mnuWhoCopy", "&Copy Name",
              [nick] { QApplication::clipboard()->setText(nick); });
  menu->popup(ui_->lstWho->viewport()->mapToGlobal(at));
}

}  // namespace brindle
