// Newer servers, with the options that make use of them: a real InspIRCd.

#include <QAbstractItemView>

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
  window.ShowTab(Tab::kRoom);
  window.Type("cmbSend", "hello");
  window.Press("cmbSend", Qt::Key_Return);
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> hello"));
  // What was said before is shown, as the server keeps it.
  bot.Send("MODE #mailroom +H 700:1d");
  ASSERT_TRUE(window.Join(1));
  bot.Say(kRoom, "meanwhile");
  ASSERT_TRUE(window.Join(0) && window.ShowsInRoom("] <MailBot> meanwhile"));

  const auto& who = *window.Find<QAbstractItemView>("lstWho").model();
  const auto botIs = [&](const QString& words) {
    const auto told = [&] {
      const QModelIndex row = who.index(0, 0);
      return row.data(Qt::AccessibleDescriptionRole).toString() + "; " +
             row.data(Qt::ToolTipRole).toString();
    };
    return WaitUntil([&] { return told() == words; }, 5000);
  };
  EXPECT_EQ(window.Items("lstWho"), "@MailBot Wanda");
  bot.Send("AWAY :asleep");
  EXPECT_TRUE(botIs("Operator, away; Away"));
  bot.Send("AWAY");
  EXPECT_TRUE(botIs("Operator; "));

  window.Folder().Write("mails.txt", "!MailBot send x y\r\n1 A\r\n2 B\r\n3 C\r\n4 D\r\n");
  window.LoadList(window.Folder().File("mails.txt"));
  window.Type("txtListAOLSN", "JaneD");
  window.ClickCheckBox(0);
  window.Click("cmdRequest");
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> !MailBot send JaneD 1"));
  bot.Send("MODE #mailroom +m");
  ASSERT_TRUE(bot.WaitForLine(" MODE #mailroom "));
  window.ClickCheckBox(2);
  window.Click("cmdRequest");
  EXPECT_TRUE(window.ShowsInRoom("] <Wanda> !MailBot send JaneD 3 (refused: "));
  EXPECT_EQ(window.Checked(), "3");
  // But for the refusal, nothing was told that Brindle does not know.
  EXPECT_EQ(Count(window.Status(), "NOT PARSED") + Count(window.Status(), "IS NUMERIC"), 1);
}

}  // namespace
}  // namespace brindle::test
