// What the user types, the order and pace in which it goes out, also in long runs of requests and
// against servers as they have been measured; and what is advertised.
#include "irc/outgoing_text.h"

#include <gtest/gtest.h>

#include <deque>
#include <set>

#include "advert/advertisement.h"
#include "irc/server_pace.h"
#include "support/talk_stage.h"

namespace brindle {
namespace {

using namespace std::string_literals;

TEST(OutgoingText, SendsAndEchoesWhatIsTyped) {
  const std::string tooShort = "0|^C2Not enough parameters for tell.";
  const std::string roomChange = "1^C12Either not enough or too many parameters for room change.|";
  const auto many = [](size_t count, char c = 'x') { return std::string(count, c); };
  const auto told = [](const std::string& nick, const std::string& text) {
    return "> PRIVMSG " + nick + " :" + text + "\n0|^C11You tell " + nick + ", ^C15'^C11" + text +
           "^C15'";
  };
  // ":me!u@h " is before what the others receive.
  const size_t longest = kLongestLine - 8 - "PRIVMSG #room :"s.size();
  const std::pair<std::string, std::string> table[] = {
      {"hi  there ", Said("hi  there ")},
      {"/me waves", Said("/me waves")},
      {"/msg bob hi", told("bob", "hi")},
      {"/TELL Bob a  b", told("Bob", "a  b")},
      {"/msg bob", tooShort},
      {"/msg " + many(476) + " hi", told(many(476), "hi")},
      {"/msg " + many(477) + " hi", "hint That name is too long for a line to the server."},
      {"/join mailroom", "> JOIN #mailroom"},
      {"/J #mailroom", "> JOIN #mailroom"},
      {"/join", roomChange},
      {"/j  a", roomChange},
      // Each line of a pasted text is a line of its own, and so is what one line cannot carry.
      {"one\r\n\n two\0/j x"s, Joined({Said("one"), Said(" two"), "> JOIN #x"})},
      {many(longest + 1), Joined({Said(many(longest)), Said("x")})},
      {many(300) + " " + many(300), Joined({Said(many(300) + " "), Said(many(300))})},
      {many(longest - 1) + "\u00E9", Joined({Said(many(longest - 1)), Said("\u00E9")})},
  };
  for (const auto& [typed, journal] : table) {
    RoomStage stage;
    stage.outgoing.cmdSend_Click(typed, 1);
    EXPECT_EQ(stage.Taken(), journal + "\nbox ''") << typed;
  }
  for (int tab = 0; tab < 7; ++tab) {
    RoomStage stage;
    stage.options.timestampChatLines = true;
    stage.outgoing.cmdSend_Click("hi", tab);
    EXPECT_EQ(stage.Taken(), "> PRIVMSG #room :hi\n" + std::string(1, "1220000"[tab]) +
                                 "|^C15[^C113:07pm^C15] ^C1<me> hi\nbox ''");
  }
}

TEST(OutgoingText, RefusesWithoutConnectionRoomOrText) {
  const std::string notConnected =
      "i You must first connect to a server before sending text to a room.";
  const std::tuple<void (ChatStage::*)(), const char*, std::string> table[] = {
      {nullptr, "hi", notConnected},
      {&ChatStage::Register, "/msg bob hi", kEnterFirst},
      {&ChatStage::EnterRoom, "   ", ""},
      {&ChatStage::EnterRoom, "1\n2\n3\n4", "i Say 4 lines?"},
  };
  for (const auto& [before, typed, journal] : table) {
    ChatStage stage;
    if (before != nullptr) (stage.*before)();
    stage.outgoing.cmdSend_Click(typed, 1);
    EXPECT_EQ(stage.Taken(), journal) << typed;
    EXPECT_EQ(stage.outgoing.History().Size(), 0U);
  }
}

TEST(OutgoingText, AsksBeforeItSaysACommandAloud) {
  const std::pair<const char*, bool> table[] = {
      {"/identify secret", true}, {" /msg bob x", true}, {"hi\n/me waves", true}, {"/", false},
      {"/msg bob x ", false},     {"/ me", false},       {"/1", false},           {"a /me", false}};
  for (const auto& [typed, asks] : table) {
    RoomStage stage;
    stage.options.askUnknownCommand = true;
    stage.outgoing.cmdSend_Click(typed, 1);
    const std::string journal = stage.Taken();
    EXPECT_EQ(journal.starts_with("! /"), asks) << typed;
    EXPECT_EQ(journal.find("> PRIVMSG") == std::string::npos, asks) << typed;
  }
  RoomStage stage;
  stage.options.askUnknownCommand = true;
  stage.answers = {"yes"};
  stage.outgoing.cmdSend_Click("/me waves", 1);
  EXPECT_EQ(stage.Taken(),
            Joined({"! /me is no command of Brindle. Say this aloud in the room?//me waves",
                    Said("/me waves"), "box ''"}));
}

TEST(OutgoingText, ManyLinesTakeTheirTurns) {
  RoomStage stage;
  stage.answers.push_back("yes");
  stage.outgoing.cmdSend_Click("1\n2\n3\n4\n5", 1);
  EXPECT_EQ(stage.Taken(), Joined({"i Say 5 lines?", Said("1"), Said("2"), Said("3"), "box ''"}));
  stage.outgoing.cmdSend_Click("6", 1);
  stage.Taken();
  stage.Wait(450);
  EXPECT_EQ(stage.Taken(), Joined({Said("4"), Said("5")}));
  stage.connection.wsChat_Error("x");
  stage.EnterRoom();
  stage.Wait(1000);
  EXPECT_EQ(stage.Taken(), "");
}

TEST(OutgoingText, RemembersEveryLineOnceAndWalksBack) {
  RoomStage stage;
  for (const char* typed : {"one", "/msg bob", "ONE", "One ", "\u00C9t\u00E9", "\u00E9T\u00C9"}) {
    stage.outgoing.cmdSend_Click(typed, 1);
  }
  stage.Taken();
  // A key ("u" and "d" for up and down, "s" sends), what is in the box, and what is put there.
  const std::tuple<char, const char*, std::string> table[] = {
      {'d', "begun", ""},
      {'u', "begun", "\u00C9t\u00E9"},
      {'u', "\u00C9t\u00E9", "One "},
      {'u', "One more", "/msg bob"},  // what is made of an entry is there again
      {'d', "/msg bob", "One more"},
      {'d', "One more", "\u00C9t\u00E9"},
      {'d', "\u00C9t\u00E9", "begun"},
      {'u', "", "\u00C9t\u00E9"},
      {'u', "", "One more"},
      {'u', "", "/msg bob"},
      {'u', "", "one"},
      {'u', "one", ""},
      {'s', "two", ""},  // ends the walk
      {'u', "", "two"},
  };
  for (const auto& [key, typed, box] : table) {
    if (key == 's') stage.outgoing.cmdSend_Click(typed, 1), stage.Taken();
    if (key == 'u') stage.outgoing.cmbSend_Up(typed);
    if (key == 'd') stage.outgoing.cmbSend_Down(typed);
    EXPECT_EQ(stage.Taken(), box.empty() ? "" : "box '" + box + "'") << typed;
  }
}

// ^C and ^B stand for the marks of colour and bold.
const std::string kAd =
    "^C5Check out ^C9Brindle ^C5for your ^C9server helper ^C5needs! No need for IRC! Head over to "
    "^C9^Bwww.brindle.example^B ^C5to check out screens, updates, and features. ^C9v0.5.70 "
    "released ^C5jan. 05! ^C13^B[^C6AD : 10 minutes^C13]";
const std::string kIntro = "^C5Here's what people are saying about Brindle : \"^C9";

struct AdStage : ChatStage, AdvertisementView {
  void SetIdleCaption(const std::string& text) override { Note("idle " + text); }
  void SetSentAd(const std::string& text) override { Note("sent " + text); }
  void EnableAdTimer(bool enabled) override { running = enabled; }
  // The minutes in which something was said, of the next so many: "1 11".
  std::string Minutes(int count) {
    std::string minutes;
    for (int minute = 1; minute <= count; ++minute) {
      const size_t before = sentAt.size();
      if (running) ad.tmrAD_Timer();
      Wait(60000);
      if (sentAt.size() > before) minutes += (minutes.empty() ? "" : " ") + std::to_string(minute);
    }
    return minutes;
  }
  bool running = false;
  Advertisement ad{session, voice, *this, "www.brindle.example"};
};

TEST(Advertisement, SpeaksEveryTenMinutes) {
  AdStage stage;
  stage.EnterRoom();
  stage.ad.cmdIdle_Click();
  EXPECT_EQ(stage.Taken(), "idle Back");
  EXPECT_EQ(stage.Minutes(25), "1 11 21");
  EXPECT_TRUE(stage.Taken().ends_with("sent Sent advertise 3 time(s)"));
  // Off in the fifth minute of a cycle, and on again.
  stage.ad.cmdIdle_Click();
  EXPECT_EQ(stage.Taken() + stage.Minutes(30), "idle Idle");
  stage.ad.cmdIdle_Click();
  EXPECT_EQ(stage.Minutes(21), "1 11 21");
  // Without a room the caption goes back and the timer runs on.
  stage.Receive(":me!u@h PART #room");
  stage.Taken();
  EXPECT_EQ(stage.Minutes(10), "");
  EXPECT_EQ(stage.Taken(), "idle Idle");
  EXPECT_TRUE(stage.running);
}

TEST(Advertisement, SaysItsTextAndOneOfTwoOpinions) {
  AdStage stage;
  stage.EnterRoom();
  stage.ad.cmdIdle_Click();
  stage.Taken();
  std::set<std::string> seen;
  for (int i = 1; i < 2000 && seen.size() < 2; ++i) {
    for (int minute = 0; minute < 10; ++minute) stage.ad.tmrAD_Timer();
    stage.Wait(2000);
    const std::string text = Readable(stage.ad.State().text);
    EXPECT_EQ(stage.Taken(), Joined({Said(kAd), Said(text),
                                     "sent Sent advertise " + std::to_string(i) + " time(s)"}));
    EXPECT_TRUE(text.starts_with(kIntro));
    seen.insert(text.substr(text.rfind('^') - 1));
  }
  EXPECT_EQ(seen, (std::set<std::string>{".^C5\" -Harrowgate", "!^C5\" -Lumenfox"}));
}

// A server that takes `burst` commands at once and then one in `interval`; an answer travels `way`
// milliseconds in each direction. Commands that wait too long a queue end the session.
struct SimulatedServer {
  double burst;
  double interval;
  TickCount way;
  int freeFrom = 100'000;  // the request after which it keeps up with anything,
  double pause = 0;        // after so many milliseconds

  struct Command {
    TickCount arrives;
    std::string line;
  };
  std::deque<Command> waiting = {};
  std::deque<Command> answers = {};
  double credit = burst;
  TickCount last = 0;
  size_t longestQueue = 0;
  int requests = 0;
  TickCount worstTyped = 0;

  void Turn(TickCount now, ChatStage& stage) {
    if (requests == freeFrom) std::tie(interval, credit, freeFrom) = std::tuple(1, -pause, 0);
    credit = std::min(burst, credit + static_cast<double>(now - last) / interval);
    last = now;
    while (!waiting.empty() && waiting.front().arrives <= now && credit >= 1) {
      const Command command = waiting.front();
      waiting.pop_front();
      credit -= 1;
      if (command.line.starts_with("PING :")) {
        answers.push_back({now + way, ":srv PONG srv " + command.line.substr(5)});
      } else if (command.line.ends_with("typed")) {
        worstTyped = std::max(worstTyped, now - command.arrives + way);
      } else {
        ++requests;
      }
    }
    longestQueue = std::max(longestQueue, waiting.size());
    while (!answers.empty() && answers.front().arrives <= now) {
      const std::string line = answers.front().line;
      answers.pop_front();
      stage.Receive(line);
    }
  }
};

// A stage in whose list every other row is checked, and asked for.
void AskFor(size_t mails, TalkStage& stage) {
  std::string checks;
  while (checks.size() < 2 * mails) checks += "x.";
  stage.EnterRoom();
  stage.Request(checks);
}

TEST(ServerPace, FollowsTheServerAndLeavesRoomForTheUser) {
  // Requests, and milliseconds at most for them and from a key to the room.
  const std::tuple<const char*, SimulatedServer, int, TickCount, TickCount> table[] = {
      {"one a second, near", {10, 1000, 0}, 300, 483'500, 1110},
      {"one a second, far", {10, 1000, 150}, 300, 485'800, 1360},
      {"keeps up, near", {1000, 1, 0}, 300, 60'700, 0},
      {"keeps up, far", {1000, 1, 150}, 300, 63'900, 150},
      {"three a second", {10, 333, 0}, 300, 478'000, 1100},
      {"burst of twenty", {20, 1000, 0}, 300, 478'300, 1300},
      {"busy at first", {10, 1000, 0, 200}, 700, 575'800, 1110},
      {"stops once", {1000, 1, 0, 100, 4000}, 300, 63'900, 1210},
      {"one a second, long", {10, 1000, 0}, 700, 1'145'300, 1850},
      {"one in two seconds", {10, 2000, 0}, 300, 2'348'300, 15'600},
  };
  for (const auto& [name, kind, mails, slowest, worstTyped] : table) {
    SCOPED_TRACE(name);
    TalkStage stage;
    SimulatedServer server = kind;
    const TickCount start = server.last = stage.ticks;
    AskFor(mails, stage);
    for (TickCount now = 0; !stage.stack.IsIdle() && now < slowest; now += 10) {
      // The user types now and then, also while the pace is being found.
      if (now % 2900 < 10 && now > 0) stage.outgoing.cmdSend_Click("typed", 1);
      stage.Wait(10);
      const std::string taken = stage.Taken();
      for (const std::string_view words : Split(taken, "\n")) {
        if (!words.starts_with("> ")) continue;
        server.waiting.push_back({stage.ticks + kind.way, std::string(words.substr(2))});
      }
      server.Turn(stage.ticks, stage);
    }
    EXPECT_LT(stage.ticks - start, slowest);
    for (int i = 0; i < 3000; ++i) server.Turn(stage.ticks += 10, stage);
    EXPECT_EQ(server.requests, mails);
    EXPECT_LE(server.worstTyped, worstTyped);
    EXPECT_LE(server.longestQueue, 8U);
  }
}

TEST(ServerPace, ShortRunsLookAsTheyAlwaysDid) {
  TalkStage stage;
  AskFor(20, stage);
  stage.Wait(10'000);
  EXPECT_EQ(stage.sentAt.size(), 20U);
  EXPECT_EQ(Split(stage.Taken(), "PING").size(), 1U);
}

TEST(ServerPace, WaitsForAServerThatIsSilentAndSaysSo) {
  TalkStage stage;
  AskFor(50, stage);
  stage.Wait(59'000);
  EXPECT_EQ(stage.sentAt.size(), 4U);
  stage.Taken();
  stage.Wait(2'000);
  EXPECT_EQ(stage.Taken(),
            "hint The server has not answered for a minute; the requests wait for it.");
  // What it has not confirmed is checked again when it goes.
  stage.Receive(":srv PONG srv :brindle1");
  EXPECT_EQ(stage.Taken().find("NOT PARSED"), std::string::npos);
  stage.connection.wsChat_Error("gone");
  stage.Wait(10);
  EXPECT_EQ(stage.list.CheckedCount(), 49U);
}

}  // namespace
}  // namespace brindle
