// Whole sessions with real IRC servers: what the user does, and everything that the two views then
// show, text and colours.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListView>
#include <QRegularExpression>
#include <QTest>
#include <algorithm>

#include "base/time_text.h"
#include "platform/clock_qt.h"
#include "support/irc_server.h"
#include "support/raw_client.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kRoom = "#mailroom";

constexpr const char* kRule =
    "{#c0c0c0}-----{#808080}----------{#c0c0c0}----------------------------------------"
    "{#808080}----------{#c0c0c0}-----";
constexpr const char* kConnecting = "{#008000}* Connecting to 127.0.0.1";
constexpr const char* kGreeting =
    "{#00ff00}You are now connected. To enter a channel locate the channel listbox on the right "
    "and double click a room name.";
constexpr const char* kTalking = "{#008000}* Now talking in #mailroom";
constexpr const char* kDisconnected = "{#ff0000}Disconnected...";
constexpr const char* kPing = "{#ff00ff}[{#008080}SERVER PING{#ff00ff}]";

// What the two servers say in their own words.
struct ServerWords {
  std::string welcome;
  std::string mask;  // user and host of the program's user
  Lines fromUsersToMotd;
  std::string endOfMotd;
  std::string nickInUse;
  std::string ownQuit;
  // Shown in the room when the session ends orderly.
  Lines statistics;
};

const ServerWords& WordsOf(IrcServer::Kind kind) {
  static const ServerWords ngircd = {
      .welcome = "Welcome to the Internet Relay Network ",
      .mask = "~plenty@127.0.0.1",
      .fromUsersToMotd = {"{#000000}There are <n> users and <n> services on 1 servers",
                          "{#000000}- Welcome to the test network.",
                          "{#000000}- Be kind to the bots,", "{#000000}- they do their best."},
      .endOfMotd = "End of MOTD command",
      .nickInUse = "{#ff0000}Nickname already in use",
      .ownQuit = "Wanda",
      .statistics = {"{#800000}-irc.brindle.test- Connection statistics: client <n> kb, server <n> "
                     "kb."},
  };
  static const ServerWords inspircd = {
      .welcome = "Welcome to the BrindleTest IRC Network ",
      .mask = "plenty@127.0.0.1",
      .fromUsersToMotd = {"{#000000}There are <n> users and <n> invisible on 1 servers",
                          "{#000000}unknown connections", "{#000000}Welcome to the test network.",
                          "{#000000}Be kind to the bots,", "{#000000}they do their best."},
      .endOfMotd = "End of message of the day.",
      .nickInUse = "{#ff0000}Nickname is already in use.",
      .ownQuit = "Client exited",
      .statistics = {},
  };
  return kind == IrcServer::Kind::kNgircd ? ngircd : inspircd;
}

// The numbers that no test can know: users on the server, bytes of a connection, the drawn nick.
std::string Masked(const std::string& transcript) {
  QString text = QString::fromStdString(transcript);
  text.replace(QRegularExpression("There are \\d+ users and \\d+"), "There are <n> users and <n>");
  text.replace(QRegularExpression("client [\\d.]+ kb, server [\\d.]+ kb"),
               "client <n> kb, server <n> kb");
  text.replace(QRegularExpression("Brindle[1-9]\\d{0,2}\\b"), "Brindle<n>");
  return text.toStdString();
}

// A transcript begins with the line break of its first line.
std::string Joined(const std::vector<Lines>& parts) {
  std::string text;
  for (const Lines& lines : parts) {
    for (const std::string& line : lines) text += "\n" + line;
  }
  return text;
}

class SessionTest : public testing::TestWithParam<IrcServer::Kind> {
 protected:
  void SetUp() override {
    Prepare(server_);
    ASSERT_TRUE(server_.Start()) << server_.Error().toStdString();
  }
  virtual void Prepare(IrcServer&) {}

  // All three register at the same time: a server may take its time for each. Anna is in the room.
  void RegisterAll() {
    anna_.Begin(server_.Port());
    bert_.Begin(server_.Port());
    ASSERT_TRUE(window_.Register("Wanda", server_.Port()));
    ASSERT_TRUE(anna_.WaitForWelcome());
    ASSERT_TRUE(bert_.WaitForWelcome());
    ASSERT_TRUE(anna_.Join(kRoom));
  }

  // The window asks who a newcomer is; waits until the server has read and answered that.
  void BertJoins() {
    const std::string before = window_.Nicks();
    ASSERT_TRUE(bert_.Join(kRoom));
    ASSERT_TRUE(window_.WhosHere(before + " " + bert_.Nick()));
    for (const char* token : {"first", "second"}) {
      bert_.Send(std::string("PING ") + token);
      ASSERT_TRUE(bert_.WaitForLine(token));
    }
  }

  void SetMode(const std::string& mode) {
    anna_.Send("MODE #mailroom " + mode);
    ASSERT_TRUE(anna_.WaitForLine("MODE #mailroom "));
  }

  void ClickDisconnect() {
    window_.ShowTab(Tab::kConnection);
    window_.Click("cmdConnect");
    ASSERT_TRUE(window_.ShowsInStatus("Disconnected..."));
    ASSERT_TRUE(window_.ShowsInRoom("Disconnected..."));
    ExpectEnded();
  }

  // After any end of a session; what came too much would have time to show.
  void ExpectEnded() {
    LetTicksPass(3);
    EXPECT_EQ(window_.ConnectButton(), "Connect");
    EXPECT_EQ(window_.Text("barStatusPanel1"), "Status - Disconnected");
    EXPECT_EQ(window_.App().Window().windowTitle(), "Brindle v0.5.85");
    EXPECT_TRUE(window_.Find<QLineEdit>("txtConnectNick").isEnabled());
    EXPECT_TRUE(window_.Find<QLineEdit>("txtAlternateNick").isEnabled());
    EXPECT_EQ(window_.App().CurrentSession().currentRoom, "");
  }

  // The status lines from the welcome to the greeting.
  Lines Welcome(const std::string& nick) const {
    Lines lines = {"{#000000}" + Words().welcome + nick + "!" + Words().mask};
    const Lines& more = Words().fromUsersToMotd;
    lines.insert(lines.end(), more.begin(), more.end());
    lines.push_back("{#000000}" + Words().endOfMotd);
    lines.push_back(kGreeting);
    return lines;
  }

  const ServerWords& Words() const { return WordsOf(GetParam()); }
  std::string Status() { return Masked(window_.Status()); }
  std::string Room() { return Masked(window_.Room()); }

  IrcServer server_{GetParam()};
  WindowDriver window_{{kRoom, "#second"}};
  RawClient anna_{"Anna"};
  RawClient bert_{"Bert"};
};

TEST_P(SessionTest, TellsAllThatHappensInARoom) {
  RegisterAll();
  EXPECT_EQ(window_.ConnectButton(), "Disconnect");
  EXPECT_EQ(window_.Text("barStatusPanel1"), "Status - Connected");
  EXPECT_TRUE(window_.App().Window().windowTitle().startsWith(
      "Brindle v0.5.85 [NICK : Wanda] [CONNECTED : "));
  anna_.Send("TOPIC #mailroom :Mails: ask the bots");
  ASSERT_TRUE(anna_.WaitForLine("TOPIC #mailroom"));
  ASSERT_TRUE(window_.Join(0));
  BertJoins();
  bert_.Say(kRoom,
            "hello: \x03"
            "4,1red\x03 and \x02plain\x02 gr\xC3\xBC\xC3\x9F gr\xFC\xDF");
  bert_.Say(kRoom, "\001ACTION waves: a hand\001");
  bert_.Send("NOTICE #mailroom :to the room");
  bert_.Send("NOTICE Wanda :to you: yes");
  bert_.Say("Wanda", "psst: hey");
  bert_.Send("NICK Bertram");
  bert_.Send("PART #mailroom :bye");
  ASSERT_TRUE(window_.ShowsInRoom("Bertram has left"));
  EXPECT_EQ(window_.SortedWho(), "Who's here (2) @Anna Wanda");
  bert_.SetNick("Bertram");
  BertJoins();
  SetMode("+v Wanda");
  anna_.Send("KICK #mailroom Bertram :out: you go");
  ASSERT_TRUE(bert_.WaitForLine("KICK #mailroom Bertram"));
  BertJoins();
  bert_.Send("QUIT :gone");
  ASSERT_TRUE(window_.ShowsInRoom("Bertram has quit."));
  EXPECT_EQ(window_.SortedWho(), "Who's here (2) @Anna Wanda");
  ClickDisconnect();

  EXPECT_EQ(Status(), Joined({{kConnecting}, Welcome("Wanda"), {kRule, kDisconnected}}));
  EXPECT_EQ(Room(), Joined({{
                                kTalking,
                                "{#008000}* Topic is 'Mails: ask the bots'",
                                kRule,
                                "{#008000}* Bert {#00ff00}has joined {#008000}#mailroom",
                                "{#000000}<Bert> hello: {#ff0000}red{#000000} and plain "
                                "gr\xC3\x83\xC2\xBC\xC3\x83\xC5\xB8 gr\xC3\xBC\xC3\x9F",
                                "{#808080}* Bert waves: a hand",
                                "{#800000}-Bert- to the room",
                                "{#800000}-Bert- to you: yes",
                                "{#00ffff}Bert tells you, {#c0c0c0}'{#00ffff}psst: hey{#c0c0c0}'",
                                "{#00ffff}(To reply type /msg Bert text)",
                                "{#00ffff}* Bert is now known as Bertram.",
                                "{#008000}* Bertram {#00ff00}has left {#008000}#mailroom",
                                "{#008000}* Bertram {#00ff00}has joined {#008000}#mailroom",
                                "{#00ffff}* Anna says out: you go, then kicks Bertram from the "
                                "channel.",
                                "{#008000}* Bertram {#00ff00}has joined {#008000}#mailroom",
                                "{#0000ff}* Bertram has quit.",
                            },
                            Words().statistics,
                            {kDisconnected}}));
}

TEST_P(SessionTest, TakesTheAlternateNickAndThenANumberedOne) {
  anna_.Begin(server_.Port());
  bert_.Begin(server_.Port());
  ASSERT_TRUE(anna_.WaitForWelcome());
  ASSERT_TRUE(bert_.WaitForWelcome());
  window_.Connect("Anna", "Wanda", server_.Port());
  EXPECT_EQ(window_.ConnectButton(), "Disconnect (disabled)");
  EXPECT_FALSE(window_.Find<QLineEdit>("txtConnectNick").isEnabled());
  EXPECT_FALSE(window_.Find<QLineEdit>("txtAlternateNick").isEnabled());
  ASSERT_TRUE(window_.ShowsInStatus("You are now connected."));
  EXPECT_EQ(window_.Find<QLineEdit>("txtAlternateNick").text(), "Wanda");
  EXPECT_TRUE(window_.Find<QLineEdit>("txtConnectNick").isEnabled());
  ClickDisconnect();
  Lines expected = {kConnecting, Words().nickInUse};
  EXPECT_EQ(Status(), Joined({expected, Welcome("Wanda"), {kDisconnected}}));

  WindowDriver second;
  second.Connect("Anna", "Bert", server_.Port());
  ASSERT_TRUE(second.ShowsInStatus("You are now connected."));
  const std::string nick = second.Find<QLineEdit>("txtAlternateNick").text().toStdString();
  EXPECT_EQ(Masked(nick), "Brindle<n>");
  EXPECT_EQ(second.App().CurrentSession().currentNick, nick);
  expected.push_back(Words().nickInUse);
  EXPECT_EQ(Masked(second.Status()), Joined({expected, Welcome("Brindle<n>")}));
  EXPECT_EQ(second.Room(), "");
}

TEST_P(SessionTest, IsRefusedByFullAndBanningRoomsAndKicked) {
  RegisterAll();
  SetMode("+l 1");
  window_.AskToJoin(0);
  ASSERT_TRUE(window_.ShowsInRoom("full"));
  SetMode("-l");
  SetMode("+b Wanda!*@*");
  window_.AskToJoin(0);
  ASSERT_TRUE(window_.ShowsInRoom("banned"));
  EXPECT_EQ(window_.App().CurrentSession().currentRoom, "");
  SetMode("-b Wanda!*@*");

  ASSERT_TRUE(window_.Join(0));
  EXPECT_EQ(window_.App().CurrentSession().currentRoom, kRoom);
  anna_.Send("KICK #mailroom Wanda :go: now");
  ASSERT_TRUE(window_.ShowsInRoom("then kicks"));
  EXPECT_EQ(window_.App().CurrentSession().currentRoom, "");
  EXPECT_EQ(window_.Who(), "Who's here (1) @Anna");
  ASSERT_TRUE(window_.Join(0));
  EXPECT_EQ(window_.SortedWho(), "Who's here (2) @Anna Wanda");
  anna_.Send("KICK #mailroom Wanda :again");
  ASSERT_TRUE(window_.ShowsInRoom("says again, then kicks"));
  ClickDisconnect();

  const Lines refusals = {"{#ff0000}#mailroom - Can't join, room is full.",
                          "{#ff0000}#mailroom - Can't join, you are banned from this room."};
  EXPECT_EQ(Status(),
            Joined({{kConnecting}, Welcome("Wanda"), refusals, {kRule, kRule}, {kDisconnected}}));
  EXPECT_EQ(
      Room(),
      Joined({refusals,
              {kTalking, kRule, "{#00ffff}* Anna says go: now, then kicks Wanda from the channel.",
               kTalking, kRule, "{#00ffff}* Anna says again, then kicks Wanda from the channel."},
              Words().statistics,
              {kDisconnected}}));
  EXPECT_FALSE(anna_.HasReceived("I was using"));
}

TEST_P(SessionTest, LeavesTheOldRoomForTheNew) {
  RegisterAll();
  ASSERT_TRUE(window_.Join(0));
  auto& rooms = window_.Find<QListView>("lstChannels");
  const QPoint second = rooms.visualRect(rooms.model()->index(1, 0)).center();
  QTest::mouseClick(rooms.viewport(), Qt::LeftButton, {}, second);
  QTest::mouseDClick(rooms.viewport(), Qt::LeftButton, {}, second);
  ASSERT_TRUE(window_.ShowsInRoom("has left #mailroom"));
  ASSERT_TRUE(anna_.WaitForLine(":Wanda!" + Words().mask + " PART "));
  EXPECT_EQ(window_.App().CurrentSession().currentRoom, "#second");
  // The server's echo of the parting is about Wanda, so it takes her off the list.
  EXPECT_EQ(window_.Who(), "Who's here (0) ");
  ASSERT_TRUE(bert_.Join("#second"));
  ASSERT_TRUE(window_.WhosHere("Bert"));
  anna_.Say(kRoom, "nobody else here");
  bert_.Say("#second", "heard");
  ASSERT_TRUE(window_.ShowsInRoom("heard"));
  ClickDisconnect();
  EXPECT_TRUE(
      bert_.WaitForLine("PRIVMSG #second :\x03"
                        "1I was using"));

  EXPECT_EQ(Status(), Joined({{kConnecting}, Welcome("Wanda"), {kRule, kRule, kDisconnected}}));
  EXPECT_EQ(
      Room(),
      Joined({{kTalking, kRule, "{#ff0000}* Parted", "{#008000}* Now talking in #second", kRule,
               "{#008000}* Wanda {#00ff00}has left {#008000}#mailroom",
               "{#008000}* Bert {#00ff00}has joined {#008000}#second", "{#000000}<Bert> heard"},
              Words().statistics,
              {kDisconnected}}));
}

TEST_P(SessionTest, SaysFarewellAndConnectsAgain) {
  RegisterAll();
  ASSERT_TRUE(window_.Join(0));
  ASSERT_TRUE(anna_.WaitForLine("JOIN"));
  ClickDisconnect();
  const std::string wanda = ":Wanda!" + Words().mask + " ";
  const auto farewell = anna_.WaitForLine([](const std::string&) { return true; });
  ASSERT_TRUE(farewell);
  EXPECT_EQ(farewell->text, wanda +
                                "PRIVMSG #mailroom :\x03"
                                "1I was using \x03"
                                "4Brindle v0.5.85"
                                "\x03"
                                "1 (a server helper). To learn more visit "
                                "http://www.brindle.example");
  const auto quit = anna_.WaitForLine([](const std::string&) { return true; });
  ASSERT_TRUE(quit);
  EXPECT_EQ(quit->text, wanda + "QUIT :" + Words().ownQuit);

  ASSERT_TRUE(window_.Register("Willa", server_.Port()));
  ASSERT_TRUE(window_.Join(0));
  EXPECT_EQ(window_.SortedWho(), "Who's here (2) @Anna Willa");
  EXPECT_EQ(Status(), Joined({{kConnecting},
                              Welcome("Wanda"),
                              {kRule, kDisconnected, kConnecting},
                              Welcome("Willa"),
                              {kRule}}));
  EXPECT_EQ(Room(),
            Joined({{kTalking, kRule}, Words().statistics, {kDisconnected, kTalking, kRule}}));
}

TEST_P(SessionTest, SeesTheServerEnd) {
  ASSERT_TRUE(window_.Register("Wanda", server_.Port()));
  ASSERT_TRUE(window_.Join(0));
  ASSERT_TRUE(server_.Stop());
  ASSERT_TRUE(window_.ShowsInStatus("Disconnected..."));
  ASSERT_TRUE(window_.ShowsInRoom("Disconnected..."));
  ExpectEnded();

  const Lines before = {kConnecting};
  EXPECT_EQ(Room(), Joined({{kTalking, kRule}, Words().statistics, {kDisconnected}}));
  if (GetParam() == IrcServer::Kind::kInspircd) {
    EXPECT_EQ(Status(), Joined({before, Welcome("Wanda"), {kRule, kDisconnected}}));
    return;
  }
  // ngIRCd ends without a closing notice. Its last words wait for their turn; the error does not.
  const std::string words = "{#0000ff}NOT PARSED : ERROR :Server going down:";
  const std::string error = "{#ff0000}* ERROR : The server closed the connection.";
  const std::string status = Status();
  EXPECT_TRUE(
      status == Joined({before, Welcome("Wanda"), {kRule, error, "", words}, {kDisconnected}}) ||
      status == Joined({before, Welcome("Wanda"), {kRule, words, error, ""}, {kDisconnected}}))
      << status;
}

TEST_P(SessionTest, SeesTheServerDieAndRefuse) {
  ASSERT_TRUE(window_.Register("Wanda", server_.Port()));
  ASSERT_TRUE(window_.Join(0));
  server_.Kill();
  ASSERT_TRUE(window_.ShowsInRoom("Disconnected..."));
  ExpectEnded();
  const Lines died = {kRule, "{#ff0000}* ERROR : The server closed the connection.", "",
                      kDisconnected};
  const Lines room = {kTalking, kRule, kDisconnected};
  EXPECT_EQ(Status(), Joined({{kConnecting}, Welcome("Wanda"), died}));
  EXPECT_EQ(Room(), Joined({room}));

  window_.Connect("Wanda", "", server_.Port());
  EXPECT_EQ(window_.ConnectButton(), "Disconnect (disabled)");
  ASSERT_TRUE(WaitUntil(
      [&] {
        return Room() == Joined({room, {kDisconnected}});
      },
      WindowDriver::kTimeoutMs));
  ExpectEnded();
  // The error does not wait for its turn behind the line that was queued by the click.
  const std::string error = "{#ff0000}* ERROR : Connection refused";
  const std::string status = Status();
  const Lines start = {kConnecting};
  EXPECT_TRUE(
      status == Joined({start, Welcome("Wanda"), died, {error, "", kConnecting, kDisconnected}}) ||
      status == Joined({start, Welcome("Wanda"), died, {kConnecting, error, "", kDisconnected}}))
      << status;
}

TEST_P(SessionTest, StampsChatLinesWithTheTime) {
  RegisterAll();
  ASSERT_TRUE(window_.Join(0));
  BertJoins();
  window_.App().Settings().timestampChatLines = true;
  const std::string first = ClockText(QtClock().LocalTime());
  bert_.Say(kRoom, "12 o'clock");
  bert_.Say(kRoom, "\001ACTION yawns\001");
  bert_.Send("NOTICE #mailroom :7");
  bert_.Say("Wanda", "psst");
  ASSERT_TRUE(window_.ShowsInRoom("psst"));
  const std::string last = ClockText(QtClock().LocalTime());

  QString shown = QString::fromStdString(Room());
  for (const std::string& time : {first, last}) {
    shown.replace("{#c0c0c0}[{#00ffff}" + QString::fromStdString(time) + "{#c0c0c0}] ", "<time>");
  }
  EXPECT_EQ(shown.toStdString(),
            Joined({{kTalking, kRule, "{#008000}* Bert {#00ff00}has joined {#008000}#mailroom",
                     "<time>{#000000}<Bert> 12 o'clock", "{#808080}* Bert yawns",
                     "<time>{#800000}-Bert- 7",
                     "<time>{#00ffff}Bert tells you, {#c0c0c0}'{#00ffff}psst{#c0c0c0}'",
                     "{#00ffff}(To reply type /msg Bert text)"}}));
}

class IdleSessionTest : public SessionTest {
 protected:
  void Prepare(IrcServer& server) override { server.SetPingSeconds(2); }
};

TEST_P(IdleSessionTest, SurvivesBecauseItAnswersPings) {
  constexpr int kTwoPingsMs = 40000;
  anna_.Begin(server_.Port());
  ASSERT_TRUE(window_.Register("Wanda", server_.Port()));
  ASSERT_TRUE(anna_.WaitForWelcome());
  // Neither server pings a second time, or keeps the user, when the first ping went unanswered.
  const std::string expected = Joined({{kConnecting}, Welcome("Wanda"), {kPing, kPing}});
  ASSERT_TRUE(WaitUntil([&] { return Status().size() >= expected.size(); }, kTwoPingsMs));
  EXPECT_EQ(Status(), expected);
  EXPECT_EQ(window_.ConnectButton(), "Disconnect");
  // The form that both servers use.
  const auto isPing = [](const std::string& line) { return line.find("PING ") != line.npos; };
  const auto ping = anna_.WaitForLine(isPing);
  ASSERT_TRUE(ping);
  EXPECT_EQ(ping->text, "PING :irc.brindle.test");
  EXPECT_TRUE(window_.Join(0));
}

std::string NameOf(const testing::TestParamInfo<IrcServer::Kind>& server) {
  return server.param == IrcServer::Kind::kNgircd ? "ngIRCd" : "InspIRCd";
}
const auto kBothServers = testing::Values(IrcServer::Kind::kNgircd, IrcServer::Kind::kInspircd);

INSTANTIATE_TEST_SUITE_P(Servers, SessionTest, kBothServers, NameOf);
INSTANTIATE_TEST_SUITE_P(Servers, IdleSessionTest, kBothServers, NameOf);

}  // namespace
}  // namespace brindle::test
