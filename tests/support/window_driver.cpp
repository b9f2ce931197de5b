#include "window_driver.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStyleOptionViewItem>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <memory>
#include <utility>

#include "ui/qt_text.h"
#include "wait.h"

namespace brindle::test {
namespace {

constexpr int kTickMs = 10;

QStringList ItemsOf(const QAbstractItemModel& model) {
  QStringList items;
  for (int row = 0; row < model.rowCount(); ++row) items << model.index(row, 0).data().toString();
  return items;
}

}  // namespace

std::string Transcript(const ChatTextView& view) {
  const ChatLog& log = view.Log();
  std::string transcript;
  for (size_t line = 0; line < log.LineCount(); ++line) {
    if (line > 0) transcript += '\n';
    size_t begin = 0;
    for (const LogRun& run : log.Runs(line)) {
      transcript += "{" + ToQColor(run.colour).name().toStdString() + "}";
      transcript += log.Line(line).substr(begin, run.length);
      begin += run.length;
    }
  }
  return transcript;
}

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
  const auto& tabs = Find<QTabWidget>("tabMain");
  const QRect where = tabs.tabBar()->tabRect(static_cast<int>(tab));
  QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, where.center());
}

void WindowDriver::Type(const char* field, const QString& text) {
  auto& widget = Find<QWidget>(field);
  auto* box = qobject_cast<QComboBox*>(&widget);
  QLineEdit* line = box != nullptr ? box->lineEdit() : qobject_cast<QLineEdit*>(&widget);
  QTest::keySequence(line, QKeySequence::SelectAll);
  QTest::keyClick(line, Qt::Key_Delete);
  for (const QChar letter : text) {
    // Keys are known by name only as far as ASCII goes.
    const auto key =
        letter.unicode() < 128 ? QTest::asciiToKey(letter.toLatin1()) : Qt::Key_unknown;
    QTest::sendKeyEvent(QTest::Click, line, key, QString(letter), {});
  }
}

void WindowDriver::Click(const char* button) {
  QTest::mouseClick(&Find<QAbstractButton>(button), Qt::LeftButton);
}

void WindowDriver::Choose(const char* item) { Find<QAction>(item).trigger(); }

void WindowDriver::Connect(const QString& nick, const QString& alternate, quint16 port) {
  ShowTab(Tab::kConnection);
  Type("txtConnectNick", nick);
  Type("txtAlternateNick", alternate);
  Type("cmbConnectServer", "127.0.0.1");
  Type("txtConnectPort", QString::number(port));
  Click("cmdConnect");
}

bool WindowDriver::Register(const QString& nick, quint16 port) {
  const auto greetings = [this] {
    return Find<ChatTextView>("txtStatus").PlainText().count("You are now connected.");
  };
  const auto before = greetings();
  Connect(nick, "", port);
  return WaitUntil([&] { return greetings() > before; }, kTimeoutMs);
}

void WindowDriver::AskToJoin(int row) {
  auto& list = Find<QListView>("lstChannels");
  const QRect where = list.visualRect(list.model()->index(row, 0));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, where.center());
  Click("lblJoin");
}

bool WindowDriver::Join(int row) {
  // The names end with a rule across the room view.
  const auto rules = [this] {
    return Find<ChatTextView>("txtChannel").PlainText().count("\n-----");
  };
  const auto before = rules();
  AskToJoin(row);
  return WaitUntil([&] { return rules() > before; }, kTimeoutMs);
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

bool WindowDriver::WhosHere(const std::string& nicks) {
  return WaitUntil([&] { return Nicks() == nicks; }, kTimeoutMs);
}

std::string WindowDriver::Nicks() {
  return ItemsOf(*Find<QListView>("lstWho").model()).join(' ').toStdString();
}

std::string WindowDriver::Who() { return Text("lblWhoshere") + " " + Nicks(); }

std::string WindowDriver::SortedWho() {
  QStringList nicks = ItemsOf(*Find<QListView>("lstWho").model());
  nicks.sort();
  return Text("lblWhoshere") + " " + nicks.join(' ').toStdString();
}

std::string WindowDriver::ConnectButton() {
  const auto& button = Find<QPushButton>("cmdConnect");
  return button.text().toStdString() + (button.isEnabled() ? "" : " (disabled)");
}

std::string WindowDriver::Text(const char* label) {
  return Find<QLabel>(label).text().toStdString();
}

bool WindowDriver::Shows(const char* view, const QString& part) {
  return WaitUntil([&] { return Find<ChatTextView>(view).PlainText().contains(part); }, kTimeoutMs);
}

Once::Once(std::function<bool()> condition, std::function<void()> action) {
  timer_.setInterval(1);
  QObject::connect(&timer_, &QTimer::timeout, &timer_,
                   [this, condition = std::move(condition), action = std::move(action)] {
                     if (hasRun_ || !condition()) return;
                     hasRun_ = true;
                     timer_.stop();
                     action();
                   });
  timer_.start();
}

void LetTicksPass(int count) {
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&ticks] { ++ticks; });
  timer.start(kTickMs);
  WaitUntil([&] { return ticks >= count; }, count * kTickMs * 100);
}

}  // namespace brindle::test
