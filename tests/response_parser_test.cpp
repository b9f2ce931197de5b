#include "irc/response_parser.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/session_check.h"
#include "support/session_fixture.h"

namespace brindle {
namespace {

using std::string_literals::operator""s;
using Texts = std::vector<std::string>;

const char* const kInRoom = "@op bob";
const char* const kAsBefore = "2 me #room";

// What a received text does to a session in "#room".
struct Case {
  std::string received;
  std::string queued = "";
  std::string sent = "";
  std::string state = kAsBefore;
  std::string who = kInRoom;
};

std::string Joined(const Texts& texts, const char* separator) {
  return JoinFrom({texts.begin(), texts.end()}, 0, separator);
}

void Check(const Case& row) {
  SCOPED_TRACE(testing::PrintToString(row.received.substr(0, 100)));
  SessionFixture session;
  session.EnterRoom();
  session.Receive(row.received + "\r\n");
  EXPECT_EQ(Joined(session.TakeQueued(), "\n"), row.queued);
  EXPECT_EQ(Joined(session.socket.TakeSent(), "\n"), row.sent);
  EXPECT_EQ(session.State(), row.state);
  EXPECT_EQ(Joined(session.who.Nicks().Items(), " "), row.who);
  EXPECT_FALSE(session.pump.IsBusy());
}

TEST(ResponseParser, HandlesEachCommand) {
  const Case table[] = {
      {":srv MODE #room +o bob"},
      {"NOTICE AUTH :*** Looking up"},
      {":x!u@h JOIN #room", "8|^C3* x ^C9has joined ^C3#room", "WHOIS x", kAsBefore, "@op bob x"},
      {":x join :#Else", "8|^C3* x ^C9has joined ^C3#Else", "WHOIS x", kAsBefore, "@op bob x"},
      {":ME!u@h JOIN :#New", "2|^C4* Parted\n1" + kRule + "\n2|^C3* Now talking in #New",
       "PART #room", "2 me #New", ""},
      {":me!u@h JOIN #Room", "1" + kRule + "\n2|^C3* Now talking in #Room", "", "2 me #Room", ""},
      {"ERROR :Closing Link: me (Quit)", "7|^C4Disconnected...", "", "0 me "},
      {":op!u@h KICK #room BOB :out: now",
       "2|^C11* op says out: now, then kicks BOB from the channel.", "", kAsBefore, "@op"},
      {":op!u@h KICK #room :bob", "2|^C11* op says bob, then kicks bob from the channel.", "",
       kAsBefore, "@op"},
      {":op!u@h KICK #ROOM Me :x", "2|^C11* op says x, then kicks Me from the channel.", "",
       "2 me "},
      {":op!u@h KICK #else me :x", "2|^C11* op says x, then kicks me from the channel."},
      {":op!u@h NICK :boss", "2|^C11* op is now known as boss.", "", kAsBefore, "bob boss"},
      {":Me!u@h NICK you", "2|^C11* Me is now known as you.", "", "2 you #room", "@op bob you"},
      {":bot!u@h NOTICE me :a: b", "4|^C5-bot- a: b"},
      {":srv NOTICE me", "4|^C5-srv- "},
      {":bob!u@h PART #room :bye", "9|^C3* bob ^C9has left ^C3#room", "", kAsBefore, "@op"},
      {":me!u@h PART :#ROOM", "9|^C3* me ^C9has left ^C3#ROOM", "", "2 me "},
      {":me!u@h PART #old", "9|^C3* me ^C9has left ^C3#old"},
      {":bob!u@h PRIVMSG #ROOM :hi :) all", "2|^C1<bob> hi :) all"},
      {":bob!u@2001:db8::1 PRIVMSG #room :hi", "2|^C1<bob> hi"},
      {":bob!u@h PRIVMSG #room :\001Action waves  x\001", "2|^C14* bob waves  x"},
      {":bob!u@h PRIVMSG #room :\001ACTION\001", "2|^C14* bob "},
      {":bob!u@h PRIVMSG #room :\001ACTIONS x\001", "2|^C1<bob> \001ACTIONS x\001"},
      {":bob!u@h PRIVMSG me :psst",
       "3|^C11bob tells you, ^C15'^C11psst^C15'|^C11(To reply type /msg bob text)"},
      {":bob!u@h QUIT :Bye", "2|^C12* bob has quit.", "", kAsBefore, "@op"},
      {"PING :irc.example", "1|^C13[^C10SERVER PING^C13]", "PONG :irc.example"},
      {":ping a b", "1|^C13[^C10SERVER PING^C13]", "PONG :a b"},
      {"PING a", "1|^C13[^C10SERVER PING^C13]", "PONG :a"},
      {"PING :a:b c", "1|^C13[^C10SERVER PING^C13]", "PONG :a:b c"},
      {":2001:db8::1 PING :a:b", "1|^C13[^C10SERVER PING^C13]", "PONG :a:b"},
      {":srv PING a", "1|^C13[^C10SERVER PING^C13]", "PONG :a"},
      {":srv WALLOPS :x", "1|^C12NOT PARSED : :srv WALLOPS :x"},
      {":bob!u@h PRIVMSG #room :caf\xE9 \x80", "2|^C1<bob> caf\u00E9 \u20AC"},
      {":bob!u@h PRIVMSG #room :caf\u00E9 \u20AC", "2|^C1<bob> caf\u00E9 \u20AC"},
  };
  for (const Case& row : table) Check(row);
}

TEST(ResponseParser, HandlesEachNumeric) {
  const std::string greeting =
      "1|^C9You are now connected. To enter a channel locate the channel listbox on the right and "
      "double click a room name.";
  const Case table[] = {
      {":srv 001 you :Welcome", "6|Welcome", "", "2 you #room"},
      {":srv 251 me :There are: 3", "1|There are: 3"},
      {":srv 253 me 1 :unknown", "1|unknown"},
      {":srv 332 me #room :on: topic", "2|^C3* Topic is 'on: topic^C3'"},
      {":srv 353 me = #room :+a b ", "", "", kAsBefore, "@op bob +a b"},
      {":srv 366 me #room :End\r\n:srv 353 me = #room :@op bob\r\n:srv 353 me = #room :@op bob",
       "2" + kRule, "", kAsBefore, "@op bob @op bob @op bob"},
      {":srv 372 me :- motd", "1|- motd"},
      {":srv 376 me :End", "1|End\n" + greeting},
      {":srv 422 me :No MOTD", "1|^C4No MOTD\n" + greeting},
      {":srv 433 me x :In use", "1|^C4In use", "NICK other"},
      {":srv 465 me :Banned", "1|^C4Banned"},
      {":srv 471 me #full :x", "0|^C4#full - Can't join, room is full."},
      {":srv 474 me #no :x", "0|^C4#no - Can't join, you are banned from this room."},
      {":srv 1 me :x", "1|IS NUMERIC : :srv 1 me :x"},
      {":srv 0001 me :x", "1|IS NUMERIC : :srv 0001 me :x"},
      {":srv 401 me x :No such nick", "1|IS NUMERIC : :srv 401 me x :No such nick"},
      {":srv 4a1 me", "1|^C12NOT PARSED : :srv 4a1 me"},
      {":srv 422", "1|^C4\n" + greeting},
      {"ERROR :Closing Link\r\n:srv 376 me :Late", "7|^C4Disconnected...\n1|Late\n" + greeting, "",
       "2 me "},
  };
  for (const Case& row : table) Check(row);
  for (const char* silent : {"002", "003", "004", "005", "250", "252", "254", "255", "265", "266",
                             "301", "311", "312", "317", "318", "319", "333", "338", "375"}) {
    Check({":srv "s + silent + " me a :b"});
    Check({":srv "s + silent});
  }
}

TEST(ResponseParser, LeavesMalformedLinesAlone) {
  // Nothing at all comes of these.
  for (const char* quiet :
       {":x!u@h JOIN",   ":x!u@h KICK",    ":x!u@h KICK #room", ":x!u@h NICK",   ":x!u@h NOTICE",
        ":x!u@h PART",   ":x!u@h PRIVMSG", ":srv 001",          ":srv 332",      ":srv 353",
        ":srv 353 me =", ":srv 471",       ":srv 471 me",       ":srv 474 me",   ":!u@h JOIN #room",
        ": JOIN #room",  ":x!u@h JOIN :",  ":me!u@h JOIN :",    ":me!u@h JOIN ", ":me!u@h JOIN  #x",
        ":!u@h NICK x",  ":op!u@h NICK :", ":op!u@h NICK ",     ":me!u@h NICK :"}) {
    Check({quiet});
  }
  const Case table[] = {
      {"", "1|ERROR : :"},
      {":", "1|ERROR : :"},
      {"PING", "1|ERROR : PING:"},
      {":srv", "1|ERROR : :srv"},
      {" ", "1|^C12NOT PARSED :  :"},
      {"   ", "1|^C12NOT PARSED :    :"},
      {"JOIN #room", "1|^C12NOT PARSED : JOIN #room:"},
      {"PRIVMSG #room :hi", "1|^C12NOT PARSED : PRIVMSG #room :hi:"},
      {":x!u@h  JOIN #room", "1|^C12NOT PARSED : :x!u@h  JOIN #room"},
      {":!u@h QUIT", "2|^C12*  has quit."},
      {": PART #room", "9|^C3*  ^C9has left ^C3#room"},
      {":x!u@h PRIVMSG #room", "2|^C1<x> "},
      {":x!u@h PRIVMSG  #room :a",
       "3|^C11x tells you, ^C15'^C11a^C15'|^C11(To reply type /msg x text)"},
      {":srv 353 me = #room", ""},
      {"PING :", "1|^C13[^C10SERVER PING^C13]", "PONG :"},
      {"PING ", "1|^C13[^C10SERVER PING^C13]", "PONG :"},
      // A line with too few words ends the handling of its text; what came before stays.
      {":srv 372 me :a\r\n:x JOIN\r\n:srv 372 me :b", "1|a"},
  };
  for (const Case& row : table) Check(row);
}

TEST(ResponseParser, CutsTheReceivedTextAtLineEnds) {
  const struct {
    std::string received;
    Texts queued;
  } table[] = {
      {"", {}},
      {":srv 372 me :a", {}},
      {":srv 372 me :a\r", {}},
      {":srv 372 me :a\n:srv 372 me :b\n", {}},
      {":srv 372 me :a\r\n:srv 372 me :b", {"1|a"}},
      {":srv 372 me :a\r\n:srv 372 me :b\r\n", {"1|a", "1|b"}},
  };
  for (const auto& row : table) {
    SessionFixture session;
    session.Register();
    session.Receive(row.received);
    EXPECT_EQ(session.TakeQueued(), row.queued) << row.received;
  }
  // While connecting, no colon is put behind a line.
  SessionFixture session;
  session.Connect();
  session.ForgetRecords();
  session.Receive("HELLO\r\n");
  EXPECT_EQ(session.TakeQueued(), Texts{"1|ERROR : HELLO"});
  session.Receive(":me JOIN #early\r\n:srv 353 * = #early :a\r\n:srv 376 me :End\r\n");
  EXPECT_EQ(session.State(), "2  ");
}

TEST(ResponseParser, FollowsTheOptions) {
  SessionFixture session;
  session.EnterRoom();
  session.options.timestampChatLines = true;
  session.options.noticesToStatus = true;
  session.options.messagesToStatus = true;
  session.Receive(
      ":a NOTICE me :n\r\n:a PRIVMSG me :m\r\n:a PRIVMSG #room :r\r\n"
      ":a PRIVMSG #room :\001ACTION x\001\r\n");
  const std::string time = "|^C15[^C113:07pm^C15] ";
  EXPECT_EQ(session.TakeQueued(),
            (Texts{"1" + time + "^C5-a- n",
                   "1" + time + "^C11a tells you, ^C15'^C11m^C15'|^C11(To reply type /msg a text)",
                   "2" + time + "^C1<a> r", "2|^C14* a x"}));
}

TEST(ResponseParser, ShowsTheRoomBeforeItsNamesArrive) {
  SessionFixture session;
  session.Register();
  session.who.AddNick("stale");
  session.Receive(":me JOIN #a\r\n");
  EXPECT_EQ(session.window.roomTabShown, 1);
  EXPECT_EQ(session.socket.TakeSent(), Texts{});
  EXPECT_EQ(session.who.Nicks().Size(), 0U);
  session.Receive(":x JOIN #a\r\n");
  EXPECT_EQ(session.window.roomTabShown, 1);
}

TEST(ResponseParser, LetsNothingAddALineOfItsOwn) {
  const Case table[] = {
      {"PING :a\rQUIT", "1|^C13[^C10SERVER PING^C13]", "PONG :a"},
      {"PING :a\nQUIT", "1|^C13[^C10SERVER PING^C13]", "PONG :a"},
      {"PING :a\0QUIT"s, "1|^C13[^C10SERVER PING^C13]", "PONG :a"},
      {":a\nQUIT!u@h JOIN #room", "8|^C3* a\nQUIT ^C9has joined ^C3#room", "WHOIS a", kAsBefore,
       "@op bob a\nQUIT"},
      {":bob!u@h PRIVMSG #room :\001ACTION a\r\001\n<op> spoofed\001",
       "2|^C14* bob a  <op> spoofed"},
  };
  for (const Case& row : table) Check(row);

  SessionFixture session;
  session.Register();
  session.Receive(":me JOIN #a\rQUIT\r\n:me JOIN #b\r\n");
  EXPECT_EQ(session.socket.TakeSent(), Texts{"PART #a"});
}

TEST(ResponseParser, TakesValuesOfAnyLength) {
  const std::string big(100000, 'x');
  SessionFixture session;
  session.EnterRoom();
  for (const std::string& line :
       {":" + big + "!u@h JOIN #room", ":" + big + "!u@h NICK y" + big,
        ":y" + big + " QUIT :" + big, ":op KICK #room " + big + " :" + big,
        ":a PRIVMSG " + big + " :" + big, ":srv " + big, ":srv 001 " + big + " :" + big,
        ":srv 332 me #room :" + big, std::string(100000, ' '), std::string(100000, ':'),
        ":srv 353 me = #room :" + big, ":srv 433 :" + big, "PING :" + big,
        ":srv " + std::string(100000, '9') + " x"}) {
    session.Receive(line + "\r\n");
  }
  EXPECT_EQ(session.who.Nicks().Items(), (Texts{"@op", "bob", big}));
  EXPECT_EQ(session.socket.TakeSent(), (Texts{"WHOIS " + big, "NICK other", "PONG :" + big}));
  EXPECT_EQ(session.State(), "2 " + big + " #room");
  while (session.queue.Pending() > 0) session.pump.tmrProcess_Timer();
  EXPECT_GT(session.room.text.size(), 500000U);
}

TEST(ResponseParser, SurvivesMutatedTraffic) {
  const Texts seeds = {":me!u@h JOIN :#room",
                       ":x!u@h JOIN #room",
                       ":x!u@h NICK :me",
                       ":me!u@h NICK you",
                       ":op!u@h KICK #room x :out",
                       ":x!u@h PART #room",
                       ":x!u@h QUIT :\002bye\017",
                       ":x!u@h PRIVMSG #room :\001ACTION \0034,5waves\001",
                       ":x!u@h PRIVMSG me :\037hi\u2028",
                       ":srv NOTICE me :caf\xE9",
                       "PING :tok",
                       ":srv 001 me :Welcome",
                       ":srv 353 me = #room :@op +x y",
                       ":srv 366 me #room :End",
                       ":srv 376 me :End",
                       ":srv 433 me x :In use",
                       ":srv 474 me #x :no",
                       "ERROR :Closing Link: x"};
  const Texts pieces = {" ",    ":",      "!",      "\r",     "\n",   "\r\n", "\001",
                        "\002", "\003",   "\0031,", "\017",   "\037", "#",    "me",
                        "\xC2", "\u00E9", "\u0085", "\uFDD0", "0"s,   "\0"s};
  std::mt19937 random(6);
  for (int round = 0; round < 3000; ++round) {
    std::string bytes;
    for (size_t lines = 1 + random() % 5; lines > 0; --lines) {
      std::string line = seeds[random() % seeds.size()];
      for (size_t changes = random() % 4; changes > 0; --changes) {
        const size_t at = random() % (line.size() + 1);
        if (random() % 2 == 0) {
          line.erase(at, random() % 5);
        } else {
          for (size_t n = 1 + random() % 3; n > 0; --n) {
            line.insert(at, pieces[random() % pieces.size()]);
          }
        }
      }
      bytes += line + "\r\n";
    }
    ASSERT_EQ(WrongWithReceiving(bytes), "") << testing::PrintToString(bytes);
  }
}

}  // namespace
}  // namespace brindle
