#include "tour.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionViewItem>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QtTest/QTest>

#include "support/wait.h"

namespace brindle::demo {
namespace {

constexpr int kPatienceMilliseconds = 15000;

// Row positions and mail numbers agree in the bot's list. "Between" turns the pairs into runs; the
// last two rows are checked after it, one alone and one as a neighbour of nothing.
constexpr int kPairs[] = {2, 5, 8, 10};
constexpr int kSingles[] = {12, 17};

// The window with whatever pops up over it.
QPixmap PictureOf(QWidget& window) {
  QPixmap picture = window.grab();
  QPainter painter(&picture);
  for (QWidget* popup : QApplication::topLevelWidgets()) {
    if (popup == &window || !popup->isVisible()) continue;
    painter.drawPixmap(popup->pos() - window.pos(), popup->grab());
  }
  return picture;
}

}  // namespace

Tour::Tour(const Stage& stage, const QDir& folder)
    : stage_(stage),
      pictureFolder_(folder),
      dataFolder_(stage.Visitor()),
      program_(dataFolder_.Path().toStdString(), dialogs_) {
  dialogs_.file = stage.ListPath().toStdString();
}

bool Tour::Play() {
  if (!program_.Open()) return Fail("The program does not open.");
  // A screen of 800 pixels, as the offscreen platform has, earns a warning.
  dialogs_.notices.clear();
  return Connect() && EnterRoom() && LoadList() && CheckRows() &&
         SelectBetween() && RequestSelected();
}

QStringList Tour::ExpectedRequests() const {
  const QString start = QString("!%1 send %2 ").arg(Stage::kHandle, Stage::kScreenName);
  QStringList requests;
  for (size_t i = 0; i + 1 < std::size(kPairs); i += 2) {
    requests << start + QString("%1-%2").arg(kPairs[i]).arg(kPairs[i + 1]);
  }
  for (int row : kSingles) requests << start + QString::number(row);
  return requests;
}

bool Tour::Connect() {
  Picture("ready-to-connect");
  Click("cmdConnect");
  ClickTab(Tab::kStatus);
  const auto* status = Find<ChatTextView>("txtStatus");
  if (!WaitFor("the greeting",
               [&] { return status->PlainText().contains("You are now connected."); })) {
    return false;
  }
  Picture("connected");
  return true;
}

bool Tour::EnterRoom() {
  auto* channels = Find<QListView>("lstChannels");
  const QPoint room = channels->visualRect(channels->model()->index(0, 0)).center();
  QTest::mouseClick(channels->viewport(), Qt::LeftButton, {}, room);
  Click("lblJoin");
  const auto* who = Find<QListView>("lstWho");
  const auto* chat = Find<ChatTextView>("txtChannel");
  if (!WaitFor("the names in the room", [&] {
        return who->model()->rowCount() == 2 &&
               chat->PlainText().contains(QString("Now talking in ") + Stage::kRoom);
      })) {
    return false;
  }
  Picture("in-the-room");
  return true;
}

bool Tour::LoadList() {
  ClickTab(Tab::kList);
  Click("cmdLoadList");
  auto* menu = Find<QMenu>("mnuLoadList");
  if (!WaitFor("the load menu", [&] { return menu->isVisible(); })) return false;
  Picture("load-list-menu");
  menu->close();
  Find<QAction>("mnuLoadListFile")->trigger();
  const auto* list = Find<QTableView>("lstServerList");
  if (list->model()->rowCount() != Stage::kMails) return Fail("The list is not complete.");
  Picture("list-loaded");
  return true;
}

bool Tour::CheckRows() {
  for (int row : kPairs) ClickCheckBox(row);
  Picture("rows-checked");
  return true;
}

bool Tour::SelectBetween() {
  Click("cmdSelect");
  auto* menu = Find<QMenu>("mnuSelect");
  if (!WaitFor("the select menu", [&] { return menu->isVisible(); })) return false;
  Picture("select-menu");
  menu->close();
  Find<QAction>("mnuSelectBetween")->trigger();
  for (int row : kSingles) ClickCheckBox(row);
  const QString header =
      Find<QTableView>("lstServerList")->model()->headerData(1, Qt::Horizontal).toString();
  if (header != QString("Mail Title [9/%1]").arg(Stage::kMails)) {
    return Fail("The header shows \"" + header + "\".");
  }
  Picture("selected-between");
  return true;
}

bool Tour::RequestSelected() {
  // The click returns when the last request is out.
  QTimer::singleShot(300, &program_.Window(), [this] { Picture("requesting"); });
  Click("cmdRequest");
  ClickTab(Tab::kRoom);
  const auto* chat = Find<ChatTextView>("txtChannel");
  const int answers = static_cast<int>(ExpectedRequests().size());
  if (!WaitFor("the bot's answers", [&] {
        return chat->PlainText().count(QString("-%1- ").arg(Stage::kHandle)) >= answers;
      })) {
    return false;
  }
  Picture("answered");
  if (!dialogs_.notices.empty()) {
    return Fail("A box said: " + QString::fromStdString(dialogs_.notices.front()));
  }
  return true;
}

bool Tour::Fail(const QString& what) {
  if (failure_.isEmpty()) failure_ = what;
  Picture("failed");
  return false;
}

bool Tour::WaitFor(const char* what, const std::function<bool()>& condition) {
  if (test::WaitUntil(condition, kPatienceMilliseconds)) return true;
  return Fail(QString("Waited in vain for ") + what + ".");
}

void Tour::Picture(const char* name) {
  // Until everything queued is shown.
  const auto* waiting = Find<QLabel>("lblBufferSizePeak");
  test::WaitUntil([&] { return waiting->text().startsWith("0/"); }, kPatienceMilliseconds);
  const QString file = QString("%1-%2.png").arg(++pictures_, 2, 10, QChar('0')).arg(name);
  PictureOf(program_.Window()).save(pictureFolder_.filePath(file));
}

void Tour::Click(const char* button) {
  QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
}

void Tour::ClickTab(Tab tab) {
  auto* bar = Find<QTabWidget>("tabMain")->tabBar();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(static_cast<int>(tab)).center());
}

void Tour::ClickCheckBox(int row) {
  auto* list = Find<QTableView>("lstServerList");
  const QModelIndex index = list->model()->index(row - 1, 0);
  list->scrollTo(index);
  QStyleOptionViewItem option;
  option.initFrom(list);
  option.rect = list->visualRect(index);
  option.features = QStyleOptionViewItem::HasCheckIndicator;
  option.viewItemPosition = QStyleOptionViewItem::OnlyOne;
  const QRect box =
      list->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, list);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, box.center());
}

}  // namespace brindle::demo
