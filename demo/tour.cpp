#include "tour.h"

#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QTimer>
#include <QtTest/QTest>
#include <memory>

#include "gallery.h"
#include "support/wait.h"
#include "ui/mail_table.h"

namespace brindle::demo {
namespace {

constexpr int kPatienceMilliseconds = 15000;

// Mail numbers; in the bot's list they are the row positions too. "Between" turns the pairs into
// runs; the other two are checked after it and stay alone.
constexpr int kPairs[] = {2, 5, 8, 10};
constexpr int kSingles[] = {12, 17};

constexpr char kSearch[] = "puzzles";

// The window with whatever stands or pops up over it; the frames are in no picture.
QPixmap PictureOf(QWidget& window) {
  QPixmap picture = window.grab();
  QPainter painter(&picture);
  for (QWidget* over : QApplication::topLevelWidgets()) {
    if (over == &window || !over->isVisible()) continue;
    painter.drawPixmap(over->geometry().topLeft() - window.geometry().topLeft(), over->grab());
  }
  return picture;
}

}  // namespace

Tour::Tour(const Stage& stage, const QDir& folder)
    : stage_(stage),
      folder_(folder),
      window_(std::make_shared<test::DataFolder>(stage.Visitor())) {}

bool Tour::Play() {
  const QStringList first = {"2-5", "8-10", "12", "17"};
  return Connect() && EnterRoom() && FindServer() && LoadList() && CheckRows() && SelectBetween() &&
         RequestSelected(first, "requested") && SearchList() && SayThanks() && Photograph();
}

bool Tour::Connect() {
  Picture("ready-to-connect");
  window_.Click("cmdConnect");
  window_.ShowTab(Tab::kStatus);
  if (!WaitFor("the greeting", [&] {
        return window_.Status().find("You are now connected.") != std::string::npos;
      })) {
    return false;
  }
  Picture("connected");
  return true;
}

bool Tour::EnterRoom() {
  if (!window_.Join(0)) return Fail("The room was not entered.");
  Picture("in-the-room");
  return true;
}

bool Tour::FindServer() {
  // The option to ask a new server for an access code is on.
  expected_ << QString("!%1 send %2 accesscode")
                   .arg(QString(Stage::kHandle).toLower(), Stage::kScreenName);
  if (!RoomShows("the new server", "REQUESTING ACCESSCODE.") ||
      !RoomShows("the access code", "access code")) {
    return false;
  }
  Picture("server-found");
  return true;
}

bool Tour::LoadList() {
  window_.ShowTab(Tab::kList);
  window_.Click("cmdLoadList");
  Picture("load-list-menu");
  window_.Find<QMenu>("mnuLoadList").close();
  window_.LoadList(stage_.ListPath());
  if (window_.App().Mails().Size() != Stage::kMails) return Fail("The list is not complete.");
  Picture("list-loaded");
  return true;
}

bool Tour::CheckRows() {
  for (int number : kPairs) window_.ClickCheckBox(number - 1);
  Picture("rows-checked");
  return true;
}

bool Tour::SelectBetween() {
  window_.Click("cmdSelect");
  Picture("select-menu");
  window_.Find<QMenu>("mnuSelect").close();
  window_.Choose("mnuSelectBetween");
  for (int number : kSingles) window_.ClickCheckBox(number - 1);
  const std::string header = "Mail Title [9/" + std::to_string(Stage::kMails) + "]";
  if (window_.TitleHeader() != header) return Fail("The header does not count the checks.");
  Picture("selected-between");
  return true;
}

bool Tour::RequestSelected(const QStringList& expected, const char* picture) {
  for (const QString& what : expected) {
    expected_ << QString("!%1 send %2 %3").arg(Stage::kHandle, Stage::kScreenName, what);
  }
  // The click returns when the last request is out.
  QTimer::singleShot(300, &window_.App().Window(), [this] { Picture("requesting"); });
  window_.Click("cmdRequest");
  window_.ShowTab(Tab::kRoom);
  answers_ += static_cast<int>(expected.size());
  if (!WaitFor("the bot's answers", [&] {
        const QString room = window_.Find<ChatTextView>("txtChannel").PlainText();
        return room.count("on the way to") >= answers_;
      })) {
    return false;
  }
  Picture(picture);
  return true;
}

bool Tour::SearchList() {
  window_.ShowTab(Tab::kList);
  window_.Click("cmdFind");
  window_.Type("cmbSearch", kSearch);
  window_.Click("cmdSearch");
  const auto& results = window_.Find<MailTable>("lstResults");
  if (results.model()->rowCount() < 3) return Fail("The search found too little.");
  QStringList numbers;
  for (int row : {0, 2}) {
    window_.ClickCheckBox(row, "lstResults");
    numbers << results.model()->index(row, 0).data().toString();
  }
  Picture("search-results");
  window_.Click("cmdSelected");
  const auto& notices = window_.Boxes().notices;
  if (notices.empty() || notices.back().text != "Selected 2 items.") {
    return Fail("The results were not sent back.");
  }
  window_.Boxes().questionAnswers.push_back(true);
  window_.App().Window().findChild<QWidget*>("frmResults")->close();
  return RequestSelected(numbers, "results-requested");
}

bool Tour::SayThanks() {
  const QString thanks = QString("thanks, %1!").arg(Stage::kHandle);
  window_.Type("cmbSend", thanks);
  window_.Click("cmdSend");
  if (!RoomShows("the thanks", QString("<%1> %2").arg(Stage::kNick, thanks))) return false;
  Picture("thanks");
  return true;
}

bool Tour::Photograph() {
  PhotographEverything(window_, folder_);
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

bool Tour::RoomShows(const char* what, const QString& text) {
  const auto& room = window_.Find<ChatTextView>("txtChannel");
  return WaitFor(what, [&] { return room.PlainText().contains(text); });
}

void Tour::Picture(const char* name) {
  // Until everything queued is shown and laid out.
  QCoreApplication::processEvents();
  const auto& waiting = window_.Find<QLabel>("lblBufferSizePeak");
  test::WaitUntil([&] { return waiting.text().startsWith("0/"); }, kPatienceMilliseconds);
  const QString file = QString("%1-%2.png").arg(++pictures_, 2, 10, QChar('0')).arg(name);
  PictureOf(window_.App().Window()).save(folder_.filePath(file));
}

}  // namespace brindle::demo
