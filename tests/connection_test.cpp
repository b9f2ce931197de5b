#include "irc/connection.h"

#include <gtest/gtest.h>

#include "irc/arrival_cutter.h"
#include "irc/line_pump.h"
#include "support/talk_stage.h"

namespace brindle {
namespace {

using std::string_literals::operator""s;

const std::string kEnd =
    "button Connect\nno cancel\nnicks\nlogin Status - Disconnected\n"
    "panel Status - Disconnected\ncaption Brindle v0.5.85";
const std::string kEnded = "7|^C4Disconnected...\nclose\n" + kEnd;
const std::string kQuietlyEnded = "close\n7|^C4Disconnected...\n" + kEnd;

std::string Trouble(const std::string& why) {
  return "\ntrouble " + why + "\nhint Disconnected: " + why;
}

std::string Begun(const std::string& server = "irc.example") {
  return "cancel\nbutton Disconnect off\ntrouble \nno nicks\nclose\n1|^C3* Connecting to " +
         server + "\npanel Status - Connecting...";
}

TEST(Connection, RefusesFieldsThatAreEmptyOrNoPort) {
  const std::string nick = "i Please enter your desired Nick.";
  const std::string server = "i Please select a server / port.";
  const std::string port = "The port must be a number from 1 to 65535.";
  const std::string noPort = Begun() + "\n1|^C4* ERROR : " + port + "|\n" + kEnded + Trouble(port);
  const std::pair<ConnectFields, std::string> table[] = {
      {{"  ", "x", "host", "6667"}, nick},
      {{"me", "", "  ", "6667"}, server},
      {{"me", "", "irc.example", "65536"}, noPort},
      {{"me", "", "irc.example", "99999999999999999999999999999999999999999"}, noPort},
      {{" my nick ", "", " host ", " 65535 "}, Begun(" host ") + "\nconnect host 65535"},
  };
  for (const auto& [fields, journal] : table) {
    ChatStage stage;
    stage.connection.cmdConnect_Click(fields);
    EXPECT_EQ(stage.Taken(), journal);
  }
}

TEST(Connection, FromTheFirstLineToTheLast) {
  const std::string quit = "button Connect\n> QUIT";
  const std::string welcomed =
      "button Disconnect\nno cancel\nnicks\npanel Status - Connected\nlogin Status - Connected\n"
      "caption Brindle v0.5.85 [NICK : me]\n";
  const std::string gone = "The server closed the connection.";
  const std::string silent = "The server did not answer in time.";
  const auto failed = [](const std::string& why) {
    return "1|^C4* ERROR : " + why + "|\n" + kEnded;
  };
  const std::pair<const char*, std::string> table[] = {
      {"dial", Begun() +
                   "\nconnect irc.example 6667\n> NICK me\n> USER plenty of excellent qel_0.5.85\n"
                   "login Status - Connected : Logging in"},
      {"enter; quit",
       "button Connect\n> PRIVMSG #room :^C1I was using ^C4Brindle v0.5.85^C1 (a server helper). "
       "To learn more visit http://www.brindle.example\n> QUIT"},
      {"enter; close", failed(gone) + Trouble(gone)},
      {"enter; ERROR :Server going down; close", "1|^C12NOT PARSED : ERROR :Server going down:\n" +
                                                     failed(gone) + Trouble("Server going down")},
      {"register; quit; ERROR :Closing Link: me (Quit); close",
       quit + "\n7|^C4Disconnected...\n" + kEnd + "\nclose\n" + kEnd},
      // Neither a QUIT nor a connection waits for ever.
      {"register; quit; wait 2990; -; wait 10", quit + "\n-\n" + kQuietlyEnded},
      {"dial; taken; wait 29990; -; wait 10", "-\n" + failed(silent) + Trouble(silent)},
      {"dial; taken; cancel", kQuietlyEnded},
      {"reconnect; register; error x; taken; cancel",
       "no cancel\npanel Status - Disconnected\nlogin Status - Disconnected"},
      // An old QUIT does not make the next end a quiet one.
      {"register; quit; close; register; error x", failed("x") + Trouble("x")},
      // A room that was chosen before the welcome is not that of another attempt.
      {"dial; room #x; taken; :srv 001 me :Hi", welcomed + "> JOIN #x\n6|Hi"},
      {"to elsewhere; room #x; dial; taken; :srv 001 me :Hi", welcomed + "6|Hi"},
      {"dial; room #x; cancel; dial; taken; :srv 001 me :Hi", welcomed + "6|Hi"},
  };
  for (const auto& [steps, journal] : table) {
    ChatStage stage;
    stage.Do(steps);
    EXPECT_EQ(stage.Taken(), journal) << steps;
  }
}

TEST(Connection, OffersOtherNicksUntilOneIsFree) {
  ChatStage stage;
  const auto refuse = [&stage](const std::string& numeric) {
    stage.Receive(":srv " + numeric + " * NICK :Nickname: no");
    return stage.Taken();
  };
  const auto isNumbered = [](const std::string& journal) {
    const std::string start = "1|^C4Nickname: no\nalternate Brindle";
    const std::string nick = journal.substr(journal.rfind(' ') + 1);
    return journal.starts_with(start) && journal.ends_with(nick + "\n> NICK " + nick) &&
           nick[7] != '0' && WholeNumber(nick.substr(7), 1, 999).has_value();
  };
  stage.Dial();
  stage.Taken();
  EXPECT_EQ(refuse("433"), "1|^C4Nickname: no\n> NICK other");
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(isNumbered(refuse("433")));
  // Each attempt begins anew, with what the fields hold then.
  stage.fields.alternateNick = "third";
  stage.Dial();
  stage.Taken();
  EXPECT_EQ(refuse("432"), "1|^C4Nickname: no\n> NICK third");
  EXPECT_TRUE(isNumbered(refuse("436")) && isNumbered(refuse("437")) && isNumbered(refuse("461")));
  // A server that likes none is left, with its own words.
  EXPECT_EQ(refuse("432"), "1|^C4* ERROR : Nickname: no|\n" + kEnded + Trouble("Nickname: no"));
  stage.fields.alternateNick = "  ";
  stage.Dial();
  stage.Taken();
  EXPECT_TRUE(isNumbered(refuse("433")));
}

TEST(Connection, SendsOneLineOfTheServersLengthWhateverIsInIt) {
  ChatStage stage;
  stage.Register();
  const std::string longest(510, 'x');
  for (const auto& [line, sent] : {std::pair{"PRIVMSG #r :x\rQUIT"s, "PRIVMSG #r :x"s},
                                   {"PRIVMSG #r :x\nQUIT", "PRIVMSG #r :x"},
                                   {"PRIVMSG #r :x\0QUIT"s, "PRIVMSG #r :x"},
                                   {longest + "x", longest},
                                   {"@a=b " + longest + "x", "@a=b " + longest},
                                   {longest.substr(1) + "\u00E9", longest.substr(1)},
                                   {longest.substr(2) + "\u00E9", longest.substr(2) + "\u00E9"}}) {
    stage.connection.SendRaw(line);
    EXPECT_EQ(stage.Taken(), "> " + sent);
  }
}

struct ReconnectTest : testing::Test, ChatStage {
  ReconnectTest() {
    options.reconnect = true;
    EnterRoom();
  }
  // Milliseconds until the next attempt; 0 when none comes.
  int UntilAttempt() {
    for (int waited = 100; waited < 400'000; waited += 100) {
      Wait(100);
      if (Taken().find("connect irc.example 6667") != std::string::npos) return waited;
    }
    return 0;
  }
  void Answer() {
    open = true;
    connection.wsChat_Connect();
  }
};

TEST_F(ReconnectTest, ComesBackAfterGrowingPausesAsTheUserWished) {
  for (int usual = 2000; usual < 1'000'000; usual *= 2) {
    connection.wsChat_Error("gone");
    const int pause = UntilAttempt();
    EXPECT_GE(pause, std::min(usual, 300'000) * 4 / 5);
    EXPECT_LE(pause, std::min(usual, 300'000) * 6 / 5 + 100);
  }
  Answer();
  EXPECT_NE(Taken().find("> NICK me\n"), std::string::npos);
  Receive(":srv 433 * me :taken"), Receive(":srv 433 * other :taken");
  Receive(":srv 001 Brindle1 :Welcome");
  EXPECT_NE(Taken().find("> JOIN #room\n"), std::string::npos);
  connection.wsChat_Close();
  EXPECT_LE(UntilAttempt(), 2500);
  Answer();
  EXPECT_NE(Taken().find("> NICK me\n"), std::string::npos);
}

TEST_F(ReconnectTest, StaysAwayWhenThatIsMeant) {
  Do("error x");
  EXPECT_GT(UntilAttempt(), 0);
  Answer();
  for (int i = 0; i < 30; ++i) Receive(":srv 432 * me :No such nicks");
  EXPECT_EQ(UntilAttempt(), 0);
  for (const char* end :
       {"quit; close", "error x; cancel", "error x; to nowhere", ":srv 465 me :No; close",
        "stay; error x", "error x; stop", "stop; error x"}) {
    Do("reconnect; enter");
    Do(end);
    EXPECT_EQ(UntilAttempt(), 0) << end;
  }
}

TEST_F(ReconnectTest, NoticesADeadLinkByAskingAndShowsNothingOfIt) {
  Wait(35'000);  // heard of with the first tick
  EXPECT_EQ(Taken(), "");
  Wait(10);
  EXPECT_EQ(Taken(), "> PING :brindle-link");
  Wait(19'990);
  Receive(":srv PONG srv :brindle-link");
  EXPECT_EQ(Taken(), "");
  Wait(55'000);
  EXPECT_EQ(Taken(), "> PING :brindle-link");
  Wait(10);
  EXPECT_EQ(Taken().find("1|^C4* ERROR : The server does not answer any more.|"), 0U);
}

TEST(Certificates, AreTrustedForTheirServerOnlyWhenTheUserSaysSo) {
  ChatStage stage;
  stage.fields.tls = true;
  const auto attempt = [&stage](const char* fingerprint) {
    stage.connection.cmdConnect_Click(stage.fields);
    stage.connection.wsChat_Untrusted({"srv", "maker", "self-signed", fingerprint});
    const std::string journal = stage.Taken();
    const size_t last = journal.rfind("\nconnect ");
    return journal.substr(last + 1, journal.find('\n', last + 1) - last - 1);
  };
  EXPECT_EQ(attempt("AA"), "connect irc.example 6667 tls");
  stage.answers = {"yes"};
  EXPECT_EQ(attempt("AA"), "connect irc.example 6667 tls AA");
  stage.connection.wsChat_Error("x");
  EXPECT_EQ(attempt("BB"), "connect irc.example 6667 tls AA");
  stage.fields.port = "6697";
  EXPECT_EQ(attempt("AA"), "connect irc.example 6697 tls");
}

TEST(StrictTransport, TurnsToTlsAndStaysThereUntilItsTimeHasRunOut) {
  ChatStage stage;
  stage.Dial();
  stage.Taken();
  stage.connection.StrictTransport(6697, 1000);
  EXPECT_NE(stage.Taken().find("\nconnect irc.example 6697 tls"), std::string::npos);
  EXPECT_EQ(stage.secure.StrictPort("irc.example", 0), std::nullopt);  // not seen to work yet
  stage.open = stage.isSecure = true;
  stage.secure.Trust("irc.example", 6697, "AA");
  stage.connection.StrictTransport(std::nullopt, 1000);
  EXPECT_EQ(stage.secure.StrictPort("irc.example", 0), std::nullopt);  // it may be anybody
  stage.secure.Trust("irc.example", 6697, "");
  stage.connection.StrictTransport(std::nullopt, 1000);
  stage.connection.wsChat_Error("x");
  stage.Taken();
  stage.connection.cmdConnect_Click(stage.fields);
  EXPECT_NE(stage.Taken().find("\nconnect irc.example 6697 tls"), std::string::npos);
  stage.secure.SetStrict("IRC.example", 6697, 0, 0);
  EXPECT_EQ(stage.secure.StrictPort("irc.example", 0), std::nullopt);
  stage.secure.SetStrict("irc.example", 6697, 10, 100);
  EXPECT_EQ(stage.secure.StrictPort("irc.example", 110), std::nullopt);
}

TEST(Channels, KeepsTheUsersRooms) {
  const std::string tooShort = "\nx Room names must be at least two characters long.";
  const std::tuple<std::optional<std::string>, std::string, std::string> table[] = {
      {"   ", "", ""},
      {" # a ", tooShort, ""},
      {"ab", "\nfocus", "#ab"},
      {"Mail Room", "\nfocus", "#mailroom"},
      {"#MAIL room", "\ni That room already exists in the list.", ""},
      {"##x", "\nfocus", "##x"},
      {"one,two", "\nfocus", "#one"},
      {"win\r\nQUIT", "\nfocus", "#win"},
  };
  ChatStage stage;
  std::vector<std::string> rooms;
  for (const auto& [answer, told, added] : table) {
    stage.answers.push_back(answer);
    stage.channels.lblChannelsAdd_Click();
    EXPECT_EQ(stage.Taken(), "? Enter the channel to be added :" + told);
    if (!added.empty()) rooms.push_back(added);
    EXPECT_EQ(stage.channels.Rooms().Items(), rooms);
  }
}

TEST(Channels, EntersAndRemovesRooms) {
  const std::string asked = "? Enter the channel to be added :\n";
  // What is before, what is done, its journal, and how many rooms there are then.
  const std::tuple<const char*, std::function<void(Channels&)>, std::string, size_t> table[] = {
      {"", [](Channels& c) { c.lblJoin_Click(0); },
       "i You must first connect to a server before entering a room.", 1},
      {"register", [](Channels& c) { c.lstChannels_DblClick(0); }, "> JOIN #old\nfocus", 1},
      {"register", &Channels::lblChannelsAdd_Click, asked + "> JOIN #new\nfocus", 2},
      {"register; no entering", &Channels::lblChannelsAdd_Click, asked + "focus", 2},
      {"", [](Channels& c) { c.lblChannelsRemove_Click(std::nullopt); }, "focus", 1},
      {"", [](Channels& c) { c.lblChannelsRemove_Click(0); }, "focus", 0},
  };
  for (const auto& [before, act, journal, rooms] : table) {
    ChatStage stage;
    stage.channels.Rooms().Add("#old");
    stage.answer = "new";
    stage.Do(before);
    act(stage.channels);
    EXPECT_EQ(stage.Taken(), journal);
    EXPECT_EQ(stage.channels.Rooms().Size(), rooms) << journal;
  }
}

TEST(ArrivalCutter, DeliversWholeLinesHoweverTheyCome) {
  const std::string tail(ArrivalCutter::kLongestTail + 1, 'x');
  const std::pair<std::vector<std::string>, std::vector<std::string>> table[] = {
      {{"a", "\r", "\n", "b\r\n"}, {"a\r\n", "b\r\n"}},
      {{"a\nb\rc\r\n"}, {"a\nb\rc\r\n"}},
      {{tail, "rest\r\nnext\r\n"}, {"next\r\n"}},
      {{tail + "\r", "x", "\nmore\r\nnext\r\n"}, {"next\r\n"}},
      {{std::string(ArrivalCutter::kLongestTail, 'x'), "\r\n"},
       {std::string(ArrivalCutter::kLongestTail, 'x') + "\r\n"}},
  };
  for (const auto& [arrivals, delivered] : table) {
    ArrivalCutter cutter;
    std::vector<std::string> lines;
    for (const std::string& arrival : arrivals) {
      cutter.Receive(arrival, [&](std::string_view line) { lines.emplace_back(line); });
    }
    EXPECT_EQ(lines, delivered);
  }
  // A delivery that ends the connection gets nothing more of it.
  ArrivalCutter cutter;
  int delivered = 0;
  cutter.Receive("a\r\nb\r\nc", [&](std::string_view) { ++delivered, cutter.Reset(); });
  cutter.Receive("d\r\n", [&](std::string_view line) { delivered += line == "d\r\n" ? 10 : 100; });
  EXPECT_EQ(delivered, 11);
}

}  // namespace
}  // namespace brindle
