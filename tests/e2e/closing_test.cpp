// The window is closed in the middle of something: all is saved, and the program comes to its end.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QTimer>

#include "support/scripted_server.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {
namespace {

constexpr int kLongestMs = 20000;
// 48 MB: window events run several times while that is read.
constexpr int kMails = 48000;
constexpr size_t kLongTitle = 1000;

class ClosingTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(server_.Port(), 0); }

  // Runs the program's own loop, as its entry does: `start` begins something, and the window is
  // closed once `underWay` holds. True when the loop has then come to its end by itself.
  bool EndsWhenClosed(std::function<void()> start, std::function<bool()> underWay) {
    const Once close(std::move(underWay), [this] { EXPECT_TRUE(window_.App().Window().close()); });
    QTimer::singleShot(0, &window_.App().Window(), std::move(start));
    QTimer::singleShot(kLongestMs, &window_.App().Window(), [] { QApplication::exit(1); });
    return QApplication::exec() == 0 && close.HasRun();
  }

  void ExpectSaved() {
    EXPECT_TRUE(window_.Folder().Content("channels.txt").ends_with(" \r\n#room\r\n#added\r\n"));
    EXPECT_NE(window_.Folder().Content("brindle.ini").find("preferred=me\r\n"), std::string::npos);
  }

  void AddChannel() {
    window_.Boxes().inputAnswers = {"#added"};
    window_.Click("lblChannelsAdd");
  }

  std::string ListFile(int mails, size_t titleLength) {
    const std::string title(titleLength, 'm');
    std::string text = "!MailBot send x y\r\n";
    for (int i = 1; i <= mails; ++i) text += std::to_string(i) + ". " + title + "\r\n";
    window_.Folder().Write("mails.txt", text);
    return window_.Folder().File("mails.txt").toStdString();
  }

  ScriptedServer server_;
  WindowDriver window_{{"#room"}};
};

TEST_F(ClosingTest, DuringARunOfRequests) {
  window_.Connect("me", "", server_.Port());
  server_.TakeReceivedUpTo("_0.5.85\r\n");
  server_.Send(":s 001 me :hi\r\n:me!u@h JOIN #room\r\n");
  ASSERT_TRUE(window_.ShowsInRoom("Now talking in #room"));
  AddChannel();
  window_.LoadList(QString::fromStdString(ListFile(100, 5)));
  for (int row = 0; row < 20; row += 2) window_.ClickCheckBox(row);
  window_.Type("txtListAOLSN", "JaneD");
  int echoes = 0;
  EXPECT_TRUE(EndsWhenClosed([this] { window_.Click("cmdRequest"); },
                             [&] {
                               echoes = static_cast<int>(
                                   QString::fromStdString(window_.Room()).count("send JaneD"));
                               return echoes >= 2;
                             }));
  // What was not requested stays checked.
  EXPECT_TRUE(window_.Checked().ends_with("15 17 19")) << window_.Checked();
  const std::string sent = server_.TakeReceivedUpTo("QUIT\r\n");
  EXPECT_TRUE(sent.ends_with("QUIT\r\n")) << sent;
  EXPECT_EQ(sent.find("send JaneD 19"), std::string::npos) << sent;
  EXPECT_TRUE(server_.WaitForClose());
  ExpectSaved();
}

TEST_F(ClosingTest, DuringTheLoadingOfAList) {
  window_.ShowTab(Tab::kConnection);
  window_.Type("txtConnectNick", "me");
  AddChannel();
  const std::string path = ListFile(kMails, kLongTitle);
  auto& busy = window_.Find<QLabel>("lblLoadList");
  EXPECT_TRUE(EndsWhenClosed([&] { window_.LoadList(QString::fromStdString(path)); },
                             [&] { return busy.isVisible(); }));
  EXPECT_LT(window_.App().Mails().Size(), static_cast<size_t>(kMails));
  ExpectSaved();
}

TEST_F(ClosingTest, WhileTheServerKeepsSilent) {
  AddChannel();
  EXPECT_TRUE(EndsWhenClosed([this] { window_.Connect("me", "", server_.Port()); },
                             [this] { return server_.HasReceived("_0.5.85\r\n"); }));
  EXPECT_TRUE(server_.WaitForClose());
  EXPECT_TRUE(server_.TakeReceivedUpTo("QUIT\r\n").ends_with("QUIT\r\n"));
  ExpectSaved();
}

}  // namespace
}  // namespace brindle::test
