// Whole sessions: with both kinds of real servers, with one that does what it should not, and with
// a bot in the room: what the user does, what the views then show, and there every byte that is
// sent.
#include <QClipboard>
#include <QLabel>
#include <QTest>

#include "meeting.h"

namespace brindle::test {
namespace {

using std::string_literals::operator""s;

struct SessionTest : testing::TestWithParam<IrcServer::Kind> {
  void SetUp() override { ASSERT_TRUE(server_.Start()) << server_.Error().toStdString(); }
  // Anna and Wanda; a server may name them in any order.
  bool AreTwo() {
    const auto here = [&] { return window_.Items("lstWho"); };
    return WaitUntil([&] { return here() == "@Anna Wanda" || here() == "Wanda @Anna"; }, 5000);
  }

  IrcServer server_{GetParam()};
  WindowDriver window_{{kRoom, "#second"}};
  RawClient anna_{"Anna"};
  RawClient bert_{"Bert"};
};

TEST_P(SessionTest, TellsAllThatHappens) {
  anna_.Begin(server_.Port());
  bert_.Begin(server_.Port());
  ASSERT_TRUE(bert_.WaitForWelcome() && anna_.WaitForWelcome());
  ASSERT_TRUE(anna_.Join(kRoom) && anna_.Join("#second"));
  window_.Connect("Anna", "Wanda", server_.Port());
  ASSERT_TRUE(window_.ShowsInStatus("You are now connected."));
  EXPECT_TRUE(window_.ShowsInStatus("already in use") && window_.ShowsInStatus("Be kind to the"));
  EXPECT_TRUE(window_.App().Window().windowTitle().contains(" [NICK : Wanda] [CONNECTED : "));
  ASSERT_TRUE(window_.Join(0) && AreTwo());
  ASSERT_TRUE(bert_.Join(kRoom));
  bert_.Say(kRoom, "hello: \0034,1red\003 gr\xC3\xBC\xC3\x9F");
  bert_.Say(kRoom, "\001ACTION gr\xFC\xDFt\001");
  bert_.Send("NOTICE #mailroom :to the room");
  bert_.Say("Wanda", "psst: hey");
  bert_.Send("NICK Bertram");
  bert_.Send("PART #mailroom :bye");
  ASSERT_TRUE(bert_.Join(kRoom));
  anna_.Send("KICK #mailroom Bertram :out");
  ASSERT_TRUE(bert_.WaitForLine("KICK #mailroom Bertram") && bert_.Join(kRoom));
  bert_.Send("QUIT :gone");
  ASSERT_TRUE(window_.ShowsInRoom("Bertram has quit.") && AreTwo());
  anna_.Send("KICK #mailroom Wanda :go");
  ASSERT_TRUE(window_.Tells(kHint, "You are no longer in #mailroom: kicked by Anna: go"));
  ASSERT_TRUE(window_.Join(0) && window_.Join(1));
  ASSERT_TRUE(window_.ShowsInRoom("Wanda has left #mailroom") && AreTwo());
  window_.Leave();
  EXPECT_TRUE(anna_.WaitForLine("PRIVMSG #second :\0031I was using \0034Brindle v0.5.85"));
  EXPECT_TRUE(anna_.WaitForLine(" QUIT "));
  EXPECT_TRUE(HasEnded(window_, ""));
  EXPECT_EQ(window_.App().Window().windowTitle(), "Brindle v0.5.85");
  const std::string statistics = "\n-irc.brindle.test- Connection statistics";  // ngIRCd's alone
  const std::string room = window_.Room() + statistics;
  EXPECT_EQ(room.substr(0, std::min(room.find(statistics), room.find(kGone))),
            "\n* Now talking in #mailroom" + kRule +
                "\n* Bert has joined #mailroom\n<Bert> hello: red gr\u00FC\u00DF"
                "\n* Bert gr\u00FC\u00DFt\n-Bert- to the room\nBert tells you, 'psst: hey'"
                "\n(To reply type /msg Bert text)\n* Bert is now known as Bertram."
                "\n* Bertram has left #mailroom\n* Bertram has joined #mailroom"
                "\n* Anna says out, then kicks Bertram from the channel."
                "\n* Bertram has joined #mailroom\n* Bertram has quit."
                "\n* Anna says go, then kicks Wanda from the channel."
                "\n* Now talking in #mailroom" +
                kRule + "\n* Parted\n* Now talking in #second" + kRule +
                "\n* Wanda has left #mailroom");
}

INSTANTIATE_TEST_SUITE_P(Servers, SessionTest,
                         testing::Values(IrcServer::Kind::kNgircd, IrcServer::Kind::kInspircd),
                         [](const auto& server) {
                           return server.index == 0 ? "ngIRCd" : "InspIRCd";
                         });

TEST(HostileTest, WhateverComesWeSendOnlyWhatWeMean) {
  ScriptedSession session;
  auto& [server, window] = session;
  for (const std::string& packet :
       {":s 372 me :gr\xC3"s, "\xBC\xC3\x9F\r"s, "\n:s 372 me :"s + std::string(200000, 'x'),
        "\r\nPING :t1\rQUIT\r\nPING :t2\nJOIN #x\r\nPING :t3\0JOIN #x\r\n"s,
        ":me!u@h JOIN #bad\nQUIT\r\n:me!u@h JOIN #r\rQUIT\r\n:e\nQUIT!u@h JOIN #r\rQUIT\r\n"s,
        ":s 372 me :a\0b\rc\nd\xE2\x80\xA8 <b>%n\r\nPING :end\r\n"s}) {
    server.Send(packet);
    LetTicksPass(2);
  }
  EXPECT_EQ(server.TakeReceivedUpTo("PONG :end\r\n"),
            "PONG :t1\r\nPONG :t2\r\nPONG :t3\r\nPART #bad\r\nWHOIS e\r\nPONG :end\r\n");
  const std::string ping = "\n[SERVER PING]";
  EXPECT_TRUE(window.ShowsInStatus("<b>%n\n[SERVER PING]"));
  EXPECT_EQ(window.Status(), "\n* Connecting to 127.0.0.1\nhi\ngr\u00FC\u00DF" + ping + ping +
                                 ping + kRule + kRule + "\nab c d  <b>%n" + ping);
  EXPECT_EQ(window.Room(),
            "\n* Now talking in #bad QUIT\n* Parted\n* Now talking in #r QUIT"
            "\n* e QUIT has joined #r QUIT");
  window.Type("txtInfoAOLSN", "JaneD");
  window.Type("cmbServers", "bot");
  window.Choose("mnuCommandsList");
  window.Leave();
  EXPECT_EQ(server.TakeReceivedUpTo("QUIT\r\n"), "PRIVMSG #r\r\nPRIVMSG #r\r\nQUIT\r\n");
}

struct RoomTest : testing::Test {
  void SetUp() override {
    ASSERT_TRUE(server.Start()) << server.Error().toStdString();
    // This machine by its IPv6 address; by the other one where there is none.
    const bool hasNewer = QTcpServer().listen(QHostAddress::LocalHostIPv6);
    ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port(), hasNewer ? "[::1]" : "127.0.0.1"));
  }
  // The steps of the guide that are done: "12".
  std::string Done() {
    window.ShowTab(Tab::kConnection);
    std::string steps;
    for (const auto* step : window.App().Window().findChildren<QLabel*>()) {
      const std::string name = step->accessibleName().toStdString();
      if (name.find(", done: ") != std::string::npos) steps += name.substr(5, 1);
    }
    return steps;
  }

  IrcServer server{IrcServer::Kind::kNgircd};
  Meeting meeting;
  WindowDriver& window = meeting.window;
  Texts said;  // what is expected
};

TEST_F(RoomTest, ALostServerIsComeBackToAndTheRunGoesOn) {
  window.App().Settings().reconnect = true;
  window.Folder().Write("mails.txt", "!MailBot send x y\n1 a\n2 b\n3 c\n4 d\n5 e\n6 f\n7 g\n");
  window.LoadList(window.Folder().File("mails.txt"));
  window.Type("txtListAOLSN", "JaneD");
  for (const int row : {0, 2, 4}) window.ClickCheckBox(row);
  window.Click("cmdRequest");
  ASSERT_EQ(meeting.Said(1).size(), 1U);
  server.Kill();
  EXPECT_TRUE(window.Tells("barStatusPanel1", "Status - Connecting again in "));
  EXPECT_FALSE(window.Find<QWidget>("cmdConnectCancel").isHidden());
  ASSERT_TRUE(server.Start());
  RawClient bot("MailBot");
  bot.Begin(server.Port());
  ASSERT_TRUE(bot.WaitForWelcome() && bot.Join(kRoom));
  window.Boxes().questionAnswers = {true};
  ASSERT_TRUE(window.Tells(kHint, "Requests sent: 3"));
  EXPECT_EQ(window.Boxes().questions.back().text,
            "The requests to MailBot were interrupted. Go on with the 3 mails that are left?");
  EXPECT_TRUE(WaitUntil([&] { return bot.SaidBy("Wanda").size() == 3; }));
  EXPECT_EQ(Done(), "12345");
  // Closing the window in the middle of a run ends it.
  window.ShowTab(Tab::kList);
  window.Choose("mnuSelectAll");
  for (const int row : {1, 3, 5}) window.ClickCheckBox(row);
  window.Click("cmdRequest");
  window.App().Window().close();
  EXPECT_TRUE(bot.WaitForLine(" QUIT "));
  EXPECT_LE(bot.SaidBy("Wanda").size(), 5U);
}

TEST_F(RoomTest, WhatIsTypedPastedAnnouncedAndAskedByHand) {
  window.ShowTab(Tab::kRoom);
  for (const char* line : {"hello  room", "/msg MailBot psst  now"}) {
    window.Type("cmbSend", line);
    window.Press("cmbSend", Qt::Key_Return);
  }
  QApplication::clipboard()->setText("one\r\n\r\ntwo\n");
  QTest::keySequence(window.Find<QComboBox>("cmbSend").lineEdit(), QKeySequence::Paste);
  window.Click("cmdSend");
  said = {kTo + "hello  room", "MailBot :psst  now", kTo + "one", kTo + "two"};
  EXPECT_EQ(meeting.Said(4), said);
  EXPECT_TRUE(window.ShowsInRoom(
      "\n<Wanda> hello  room\nYou tell MailBot, 'psst  now'\n<Wanda> one\n<Wanda> two"));

  window.App().Settings().scanChatForServers = true;
  window.App().Settings().requestAccessCode = true;
  window.Type("txtInfoAOLSN", "Jane D");
  meeting.bot.Say(kRoom, "/notice \002MailBot\002 send list");
  EXPECT_TRUE(
      window.ShowsInRoom("\n<MailBot> /notice MailBot send list\n::( ATTENTION ):: ADDED "
                         "MAILBOT REQUESTING ACCESSCODE.\n<Wanda> !mailbot send Jane D"));
  EXPECT_EQ(window.Items("cmbServers"), "mailbot");
  window.Type("cmbServers", "Bot");
  window.Type("txtAccessCode", "4711");
  for (const char* item :
       {"mnuCommandsVerify", "mnuCommandsList", "mnuCommandsStatus", "mnuCommandsRequest"}) {
    window.Choose(item);
  }
  window.Type("txtListAOLSN", "Jane D");
  window.Click("cmdManualRequest");
  window.Type("cmbRequestFrom", "Bot");
  window.Type("txtRequest", "12");
  window.Press("txtRequest", Qt::Key_Return);
  auto& form = window.Find<QWidget>("frmManualRequest");
  QTest::mouseClick(form.findChild<QAbstractButton*>("cmdRequest"), Qt::LeftButton);
  for (const char* text :
       {"!mailbot send Jane D accesscode", "!Bot verify Jane D 4711", "!Bot send Jane D list",
        "!Bot send Jane D status", "!Bot send Jane D accesscode", "!Bot send Jane D 12"}) {
    said.push_back(kTo + text);
  }
  EXPECT_EQ(meeting.Said(said.size()), said);
  EXPECT_EQ(Done(), "1235");

  auto& timer = window.Find<QTimer>("tmrAD");
  window.ShowTab(Tab::kInfo);
  window.Click("cmdIdle");
  EXPECT_EQ(window.Text("cmdIdle"), timer.isActive() && timer.interval() == 60000 ? "Back" : "");
  QMetaObject::invokeMethod(&timer, "timeout");
  EXPECT_GT(meeting.Said(said.size() + 1).size(), said.size());
}

}  // namespace
}  // namespace brindle::test
