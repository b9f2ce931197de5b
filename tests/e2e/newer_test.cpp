// Newer servers, with the options that make use of them: a real InspIRCd.

#include <QAbstractItemView>
#include <QRegularExpression>

#include "meeting.h"

namespace brindle::test {
namespace {

TEST(NewerTest, OwnLinesComeBackAndARefusedRequestIsCheckedAgain) {
  IrcServer server{IrcServer::Kind::kInspircd};
  ASSERT_TRUE(server.Start()) << server.Error().toStdString();
  Meeting meeting;
  auto& [window, bot] = meeting;
  window.App().Settings().useNewerProtocol = true;
  window.App().Settings().timestampChatLines = true;
  ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
  EXPECT_EQ(Count(window.Status(), "NOT PARSED"), 0);
  window.ShowTab(Tab::kRoom);
  window.Type("cmbSend", "hello");
  window.Press("cmbSend", Qt::Key_Return);
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> hello"));
  EXPECT_TRUE(window.Tells("barStatusPanel1", "Status - Connected"));

  const auto& who = *window.Find<QAbstractItemView>("lstWho").model();
  const auto botIs = [&](const QString& words) {
    return WaitUntil(
        [&] {
          const QModelIndex row = who.index(who.rowCount() - 1, 0);
          return row.data(Qt::ToolTipRole).toString() == words;
        },
        5000);
  };
  EXPECT_EQ(window.Items("lstWho"), "Wanda @MailBot");
  bot.Send("AWAY :asleep");
  EXPECT_TRUE(botIs("Away"));
  bot.Send("AWAY");
  EXPECT_TRUE(botIs(""));

  window.Folder().Write("mails.txt", "!MailBot send x y\r\n1 A\r\n2 B\r\n3 C\r\n4 D\r\n");
  window.LoadList(window.Folder().File("mails.txt"));
  window.Type("txtListAOLSN", "JaneD");
  window.ClickCheckBox(0);
  window.Click("cmdRequest");
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> !MailBot send JaneD 1"));
  bot.Send("MODE #mailroom +m");
  ASSERT_TRUE(bot.WaitForLine(" MODE #mailroom +m"));
  window.ClickCheckBox(2);
  window.Click("cmdRequest");
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> !MailBot send JaneD 3 (refused: "));
  EXPECT_EQ(window.Checked(), "3");
}

}  // namespace
}  // namespace brindle::test
