#include "window_driver.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QStyleOptionViewItem>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <memory>
#include <utility>

#include "wait.h"

namespace brindle::test {
namespace {

QLineEdit* LineOf(QWidget& field) {
  auto* box = qobject_cast<QComboBox*>(&field);
  return box != nullptr ? box->lineEdit() : qobject_cast<QLineEdit*>(&field);
}

}  // namespace

WindowDriver::WindowDriver(const std::vector<std::string>& rooms)
    : WindowDriver(std::make_shared<DataFolder>(
          StartState{.nick = {}, .server = {}, .channels = rooms, .screenName = {}})) {
  // A screen of 800 pixels, as the offscreen platform has, earns a warning.
  dialogs_.notices.clear();
  program_.Settings().timestampChatLines = false;
  program_.Settings().scanChatForServers = false;
}

WindowDriver::WindowDriver(std::shared_ptr<const DataFolder> folder)
    : folder_(std::move(folder)), program_(folder_->Path().toStdString(), dialogs_) {
  if (!program_.Open()) qFatal("the program does not open");
}

void WindowDriver::ShowTab(Tab tab) {
  QTabBar* bar = Find<QTabWidget>("tabMain").tabBar();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(static_cast<int>(tab)).center());
}

void WindowDriver::Type(const char* field, const QString& text) {
  QLineEdit* line = LineOf(Find<QWidget>(field));
  QTest::keySequence(line, QKeySequence::SelectAll);
  QTest::keyClick(line, Qt::Key_Delete);
  for (const QChar letter : text) {
    // Keys are known by name only as far as ASCII goes.
    const auto key =
        letter.unicode() < 128 ? QTest::asciiToKey(letter.toLatin1()) : Qt::Key_unknown;
    QTest::sendKeyEvent(QTest::Click, line, key, QString(letter), {});
  }
}

void WindowDriver::Press(const char* field, Qt::Key key) {
  QTest::keyClick(LineOf(Find<QWidget>(field)), key);
}

void WindowDriver::Click(const char* button) {
  QTest::mouseClick(&Find<QAbstractButton>(button), Qt::LeftButton);
}

void WindowDriver::Choose(const char* item) { Find<QAction>(item).trigger(); }

void WindowDriver::Connect(const QString& nick, const QString& alternate, quint16 port,
                           const QString& server) {
  ShowTab(Tab::kConnection);
  Type("txtConnectNick", nick);
  Type("txtAlternateNick", alternate);
  Type("cmbConnectServer", server);
  Type("txtConnectPort", QString::number(port));
  Click("cmdConnect");
}

bool WindowDriver::Register(const QString& nick, quint16 port, const QString& server) {
  const auto greetings = [this] { return Plain("txtStatus").count("You are now connected."); };
  const auto before = greetings();
  Connect(nick, "", port, server);
  return WaitUntil([&] { return greetings() > before; });
}

bool WindowDriver::Join(int row) {
  // The names end with a rule across the room view.
  const auto rules = [this] { return Plain("txtChannel").count("\n-----"); };
  const auto before = rules();
  auto& list = Find<QListView>("lstChannels");
  const QRect where = list.visualRect(list.model()->index(row, 0));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, where.center());
  Click("lblJoin");
  return WaitUntil([&] { return rules() > before; });
}

void WindowDriver::Leave() {
  ShowTab(Tab::kConnection);
  Click("cmdConnect");
}

void WindowDriver::LoadList(const QString& path) {
  ShowTab(Tab::kList);
  dialogs_.fileAnswers.push_back(path.toStdString());
  Choose("mnuLoadListFile");
}

void WindowDriver::ClickCheckBox(int row, const char* name) {
  auto& table = Find<QTableView>(name);
  const QModelIndex index = table.model()->index(row, 0);
  table.scrollTo(index);
  QStyleOptionViewItem option;
  option.initFrom(&table);
  option.rect = table.visualRect(index);
  option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
  const QRect box =
      table.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &table);
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, box.center());
}

std::string WindowDriver::Checked() {
  const QAbstractItemModel& model = *Find<QTableView>("lstServerList").model();
  std::string numbers;
  for (int row = 0; row < model.rowCount(); ++row) {
    const QModelIndex index = model.index(row, 0);
    if (index.data(Qt::CheckStateRole).toInt() != Qt::Checked) continue;
    numbers += (numbers.empty() ? "" : " ") + index.data().toString().toStdString();
  }
  return numbers;
}

std::string WindowDriver::TitleHeader() {
  const QAbstractItemModel& model = *Find<QTableView>("lstServerList").model();
  return model.headerData(1, Qt::Horizontal).toString().toStdString();
}

std::string WindowDriver::Text(const char* name) {
  const auto& widget = Find<QWidget>(name);
  const QVariant text = widget.property("text");
  QString shown = (text.isValid() ? text : widget.property("currentText")).toString();
  if (qobject_cast<const QAbstractButton*>(&widget) != nullptr) shown.remove('&');
  return shown.toStdString();
}

bool WindowDriver::Tells(const char* name, const std::string& part) {
  return WaitUntil([&] { return Text(name).find(part) != std::string::npos; });
}

std::string WindowDriver::Items(const char* name) {
  auto& widget = Find<QWidget>(name);
  auto* box = qobject_cast<QComboBox*>(&widget);
  const auto* view = qobject_cast<QAbstractItemView*>(&widget);
  const QAbstractItemModel& model = box != nullptr ? *box->model() : *view->model();
  QStringList items;
  for (int row = 0; row < model.rowCount(); ++row) items << model.index(row, 0).data().toString();
  return items.join(' ').toStdString();
}

bool WindowDriver::Shows(const char* view, const QString& part) {
  return WaitUntil([&] { return Plain(view).contains(part); });
}

void LetTicksPass(int count) {
  constexpr int kTickMs = 10;
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&ticks] { ++ticks; });
  timer.start(kTickMs);
  WaitUntil([&] { return ticks >= count; }, count * kTickMs * 100);
}

}  // namespace brindle::test
