// Windows are closed in the middle of something and in every order; the program comes to its end.
#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QWindow>
#include <csignal>

#include "meeting.h"
#include "platform/end_signals.h"

namespace brindle::test {
namespace {

std::string ListOf(int mails, size_t titleLength) {
  const std::string title(titleLength, 'm');
  std::string text = "!MailBot send x y\r\n";
  for (int i = 1; i <= mails; ++i) text += std::to_string(i) + ". " + title + "\r\n";
  return text;
}

// Runs the program's own loop, as its entry does: `start` begins something, and the program is
// ended once `underWay` holds. True when the loop has then come to its end by itself.
bool Ends(FrmMain& window, std::function<void()> start, std::function<bool()> underWay,
          std::function<void()> end) {
  constexpr int kLongestMs = 20000;
  const Once ending(std::move(underWay), std::move(end));
  QTimer::singleShot(0, &window, std::move(start));
  QTimer::singleShot(kLongestMs, &window, [] { QApplication::exit(1); });
  return QApplication::exec() == 0 && ending.HasRun();
}

void ExpectSaved(const DataFolder& folder) {
  EXPECT_TRUE(folder.Content("channels.txt").ends_with(" \r\n#mailroom\r\n"));
  EXPECT_NE(folder.Content("brindle.ini").find("preferred=me\r\n"), std::string::npos);
}

TEST(ClosingTest, BySignalInARunOfRequests) {
  ScriptedSession session;
  auto& [server, window] = session;
  server.Send(":me!u@h JOIN #room\r\n");
  ASSERT_TRUE(window.ShowsInRoom("Now talking in #room"));
  window.Folder().Write("mails.txt", ListOf(100, 5));
  window.LoadList(window.Folder().File("mails.txt"));
  for (int row = 0; row < 20; row += 2) window.ClickCheckBox(row);
  window.Type("txtListAOLSN", "JaneD");
  // As the program's entry does.
  OnEndSignal([&window = window] {
    window.App().Window().close();
    QApplication::quit();
  });
  EXPECT_TRUE(Ends(
      window.App().Window(), [&] { window.Click("cmdRequest"); },
      [&] { return Count(window.Room(), "send JaneD") >= 2; }, [] { std::raise(SIGTERM); }));
  std::signal(SIGTERM, SIG_DFL);
  // What was not requested stays checked.
  EXPECT_TRUE(window.Checked().ends_with("15 17 19")) << window.Checked();
  const std::string sent = server.TakeReceivedUpTo("QUIT\r\n");
  EXPECT_TRUE(sent.ends_with("QUIT\r\n")) << sent;
  EXPECT_EQ(sent.find("send JaneD 19"), std::string::npos) << sent;
  ExpectSaved(window.Folder());
}

TEST(ClosingTest, DuringTheLoadingOfAList) {
  constexpr int kMails = 48000;  // 48 MB: window events run several times while that is read
  WindowDriver window({kRoom});
  window.ShowTab(Tab::kConnection);
  window.Type("txtConnectNick", "me");
  window.Folder().Write("mails.txt", ListOf(kMails, 1000));
  auto& busy = window.Find<QLabel>("lblLoadList");
  EXPECT_TRUE(Ends(
      window.App().Window(), [&] { window.LoadList(window.Folder().File("mails.txt")); },
      [&] { return busy.isVisible(); }, [&] { window.App().Window().close(); }));
  EXPECT_LT(window.App().Mails().Size(), static_cast<size_t>(kMails));
  ExpectSaved(window.Folder());
}

// As the window manager closes a window.
void CloseByManager(WindowDriver& window, const char* name) {
  QWidget& main = window.App().Window();
  QWidget& which = main.objectName() == name ? main : window.Find<QWidget>(name);
  const QPointer<QWindow> handle = which.windowHandle();
  if (handle != nullptr) handle->close();
  LetTicksPass(1);
}

TEST(ClosingTest, EveryWindowAndMenuInSeveralOrders) {
  const std::vector<Texts> orders = {
      {"frmUpdater", "frmResults", "frmManualRequest", "frmMain"},
      {"frmUpdater", "frmManualRequest", "frmResults", "frmMain"},
      {"frmUpdater", "frmResults", "frmMain"},
      {"frmUpdater", "frmMain"},
      {"frmMain"},  // at a signal: a dialog blocks it otherwise
      {},           // the program ends with all of them open
  };
  for (const Texts& order : orders) {
    SCOPED_TRACE(testing::PrintToString(order));
    auto window = std::make_unique<WindowDriver>(std::vector<std::string>{kRoom});
    window->Folder().Write("mails.txt", ListOf(20, 5));
    window->LoadList(window->Folder().File("mails.txt"));
    const auto popUp = [&](QWidget& from, const char* button) {
      QTest::mouseClick(from.findChild<QAbstractButton*>(button), Qt::LeftButton);
      const QPointer<QWidget> menu = QApplication::activePopupWidget();
      EXPECT_NE(menu, nullptr) << button;
      return menu;
    };
    FrmMain& main = window->App().Window();
    for (const auto& [tab, button] : {std::pair{Tab::kList, "cmdLoadList"},
                                      {Tab::kList, "cmdSelect"},
                                      {Tab::kInfo, "cmdCommands"}}) {
      window->ShowTab(tab);
      popUp(main, button)->close();
    }
    for (ChatTextView* view : main.findChildren<ChatTextView*>()) {
      QContextMenuEvent event(QContextMenuEvent::Keyboard, {1, 1}, view->mapToGlobal(QPoint(1, 1)));
      QApplication::sendEvent(view, &event);
      if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
    }
    window->ShowTab(Tab::kList);
    window->Click("cmdManualRequest");
    window->Click("cmdFind");
    window->Type("cmbSearch", "m");
    window->Press("cmbSearch", Qt::Key_Return);
    const QPointer<QWidget> search(&window->Find<QWidget>("frmResults"));
    window->ClickCheckBox(1, "lstResults");
    window->Boxes().questionAnswers.assign(9, true);
    window->ShowTab(Tab::kConnection);
    window->Click("cmdCheckForUpdate");
    if (order.size() > 2) {
      // An item chosen when the search is gone works on nothing.
      CloseByManager(*window, "frmUpdater");
      const QPointer<QWidget> menu = popUp(*search, "cmdSelect");
      CloseByManager(*window, "frmResults");
      EXPECT_TRUE(WaitUntil([&] { return search.isNull(); }, 5000));
      for (const char* item : {"mnuSelectAll", "mnuSelectBetween", "mnuSelectNone"}) {
        window->Choose(item);
      }
      EXPECT_EQ(window->Checked(), "");
      menu->close();
      window->ShowTab(Tab::kList);
      window->Click("cmdFind");
      window->ShowTab(Tab::kConnection);
      window->Click("cmdCheckForUpdate");
    }
    for (const std::string& name : order) CloseByManager(*window, name.c_str());
    EXPECT_EQ(main.isVisible(), order.empty());
    window.reset();
    LetTicksPass(2);
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
  }
}

}  // namespace
}  // namespace brindle::test
