#include "irc/response_parser.h"

#include <gtest/gtest.h>

#include "support/talk_stage.h"

namespace brindle {
namespace {

using std::string_literals::operator""s;

const char* const kAsBefore = "2 me #room: @op bob";
const char* const kPingShown = "1|^C13[^C10SERVER PING^C13]\n";
// The rule that an own join and the end of a names reply draw.
const std::string kRule =
    "|^C15-----^C14----------^C15----------------------------------------^C14----------^C15-----";
const std::string kGreeting =
    "1|^C9You are now connected. To enter a channel locate the channel listbox on the right and "
    "double click a room name.";

// What lines do to a session in "#room".
struct Case {
  std::string received;
  std::string journal = "";
  std::string state = kAsBefore;
};

void Check(const Case& row) {
  SCOPED_TRACE(testing::PrintToString(row.received.substr(0, 100)));
  RoomStage stage;
  stage.Receive(row.received);
  EXPECT_EQ(stage.Taken(), row.journal);
  EXPECT_EQ(stage.State(), row.state);
  EXPECT_FALSE(stage.queue.IsBusy());
}

std::string Numeric(const std::string& line) { return "1|IS NUMERIC : " + line; }
std::string NotParsed(const std::string& line) { return "1|^C12NOT PARSED : " + line; }

TEST(ResponseParser, HandlesEachCommand) {
  const std::string disconnected =
      "7|^C4Disconnected...\nbutton Connect\nno cancel\nnicks\nlogin Status - Disconnected\n"
      "panel Status - Disconnected\ncaption Brindle v0.5.85";
  const Case table[] = {
      {":srv MODE #room +o bob"},
      {"NOTICE AUTH :*** Looking up"},
      {":x!u@h JOIN #room", "8|^C3* x ^C9has joined ^C3#room\n> WHOIS x", "2 me #room: @op bob x"},
      {":ME!u@h JOIN :#New",
       "> PART #room\n2|^C4* Parted\nroom tab\n1" + kRule + "\nhint \n2|^C3* Now talking in #New",
       "2 me #New: "},
      {":me!u@h JOIN #Room", "room tab\n1" + kRule + "\nhint \n2|^C3* Now talking in #Room",
       "2 me #Room: "},
      {"ERROR :Closing Link: me (Excess Flood)",
       "1|^C4Closing Link: me (Excess Flood)\n" + disconnected +
           "\ntrouble Closing Link: me (Excess Flood)\n"
           "hint Disconnected: Closing Link: me (Excess Flood)",
       "0 me : @op bob"},
      {"ERROR :Going down", NotParsed("ERROR :Going down:")},
      {":op!u@h KICK #room BOB :out: now",
       "2|^C11* op says out: now, then kicks BOB from the channel.", "2 me #room: @op"},
      {":op!u@h KICK #ROOM Me :x",
       "2|^C11* op says x, then kicks Me from the channel.\n"
       "hint You are no longer in #room: kicked by op: x",
       "2 me : @op bob"},
      {":op!u@h KICK #else bob :x", "2|^C11* op says x, then kicks bob from the channel."},
      {":op!u@h NICK :boss", "2|^C11* op is now known as boss.", "2 me #room: bob boss"},
      {":Me!u@h NICK you", "2|^C11* Me is now known as you.", "2 you #room: @op bob you"},
      {":bot!u@h NOTICE me :a: b", "4|^C5-bot- a: b"},
      {":bob!u@h PART #room :bye", "9|^C3* bob ^C9has left ^C3#room", "2 me #room: @op"},
      {":me!u@h PART :#ROOM", "9|^C3* me ^C9has left ^C3#ROOM", "2 me : @op bob"},
      {":bob!u@h PART #old", "9|^C3* bob ^C9has left ^C3#old"},
      {":bob!u@h PRIVMSG #ROOM :hi :) all", "2|^C1<bob> hi :) all"},
      {":bob!u@h PRIVMSG #room :hi Me!", "call\n2|^C1<bob> hi Me!"},
      {":bob!u@h PRIVMSG #room :\001Action waves  x\001", "2|^C14* bob waves  x\001"},
      {":bob!u@h PRIVMSG #room :\001ACTIONS x\001", "2|^C1<bob> \001ACTIONS x\001"},
      {":bob!u@h PRIVMSG me :psst",
       "call\n3|^C11bob tells you, ^C15'^C11psst^C15'|^C11(To reply type /msg bob text)"},
      {":bob!u@h PRIVMSG me :\001VERSION\001",
       "3|^C11bob sends a CTCP request, which is not answered: VERSION"},
      {":bob!u@h QUIT :Bye", "2|^C12* bob has quit.", "2 me #room: @op"},
      {"PING :a:b c", kPingShown + "> PONG :a:b c"s},
      {":2001:db8::1 PING :a:b", kPingShown + "> PONG :a:b"s},
      {":srv PONG srv :other", NotParsed(":srv PONG srv :other")},
      // What newer servers offer is not answered while that is not wanted.
      {":srv CAP * LS :sasl", NotParsed(":srv CAP * LS :sasl")},
      {"AUTHENTICATE +", NotParsed("AUTHENTICATE +:")},
      {":op TOPIC #room :new: one",
       NotParsed(":op TOPIC #room :new: one") + "\n2|^C3* op sets the topic to 'new: one^C3'",
       "2 me #room: @op bob (new: one)"},
      {":op INVITE me :#else",
       NotParsed(":op INVITE me :#else") + "\nhint op invites you to #else."},
      {":op KILL bob :spam",
       NotParsed(":op KILL bob :spam") + "\nhint op removes bob from the server: spam"},
      {":bob!u@h PRIVMSG #room :caf\xE9 \x80", "2|^C1<bob> caf\u00E9 \u20AC"},
  };
  for (const Case& row : table) Check(row);
}

TEST(ResponseParser, HandlesEachNumeric) {
  const Case table[] = {
      {":srv 001 you :Welcome",
       "button Disconnect\nno cancel\nnicks\npanel Status - Connected\nlogin Status - Connected\n"
       "caption Brindle v0.5.85 [NICK : you]\n6|Welcome",
       "2 you #room: @op bob"},
      {":srv 332 me #room :on: topic", "2|^C3* Topic is 'on: topic^C3'",
       "2 me #room: @op bob (on: topic)"},
      {":srv 353 me = #room :+a b ", "", "2 me #room: @op bob +a b"},
      {":srv 353 me = #else :+a b", ""},
      {":srv 366 me #room :End\r\n:srv 353 me = #room :@op bob", "2" + kRule,
       "2 me #room: @op bob @op bob"},
      {":srv 372 me :- motd", "1|- motd"},
      {":srv 376 me :End", "1|End\n" + kGreeting},
      {":srv 433 me x :In use", "1|^C4In use\n> NICK other"},
      {":srv 465 me :Banned", "1|^C4Banned\nbutton Connect"},
      {":srv 471 me #full :x",
       "0|^C4#full - Can't join, room is full.\n"
       "hint #full - Can't join, room is full."},
      {":srv 474 me #no :x",
       "0|^C4#no - Can't join, you are banned from this room.\n"
       "hint #no - Can't join, you are banned from this room."},
      {":srv 432 me x :Erroneous", Numeric(":srv 432 me x :Erroneous")},
      {":srv 4a1 me", NotParsed(":srv 4a1 me")},
      {":srv 366", "2" + kRule},
      {":srv 422", "1|^C4\n" + kGreeting},
  };
  for (const Case& row : table) Check(row);
  // Refusals keep their line and say why, whatever the tab.
  for (const char* refusal :
       {"401", "403", "404", "405", "442", "473", "475", "477", "482", "489"}) {
    const std::string line = ":srv "s + refusal + " me #x :No: really";
    Check({line, Numeric(line) + "\nhint #x: No: really"});
  }
  for (const char* silent : {"002", "003", "004", "005", "250", "252", "254", "255", "265", "266",
                             "301", "311", "312", "317", "318", "319", "333", "338", "375"}) {
    Check({":srv "s + silent + " me a :b"});
    Check({":srv "s + silent});
  }
}

TEST(ResponseParser, LeavesMalformedLinesAlone) {
  // Nothing at all comes of these.
  for (const char* quiet :
       {":x!u@h JOIN", ":x!u@h KICK #room", ":x!u@h NICK", ":x!u@h NOTICE", ":x!u@h PART",
        ":x!u@h PRIVMSG", ":srv 001", ":srv 332", ":srv 353 me =", ":srv 471", ":srv 474 me",
        ":!u@h JOIN #room", ": JOIN #room", ":x!u@h JOIN :", ":me!u@h JOIN :", ":me!u@h JOIN  #x",
        ":!u@h NICK x", ":op!u@h NICK :", ":me!u@h NICK :"}) {
    Check({quiet});
  }
  const Case table[] = {
      {"", "1|ERROR : :"},
      {"PING", "1|ERROR : PING:"},
      {":srv", "1|ERROR : :srv"},
      {"JOIN #room", NotParsed("JOIN #room:")},
      {":!u@h QUIT", "2|^C12*  has quit."},
      {":x!u@h PRIVMSG #room", "2|^C1<x> "},
      {":x!u@h PRIVMSG  #room :a",
       "call\n3|^C11x tells you, ^C15'^C11a^C15'|^C11(To reply type /msg x text)"},
      // A line with too few words ends the handling of its text; what came before stays.
      {":srv 372 me :a\r\n:x JOIN\r\n:srv 372 me :b", "1|a"},
      {":srv 372 me :a\n:srv 372 me :b", "1|a :srv 372 me :b"},
      // Nothing in a line adds one to what we send.
      {"PING :a\rQUIT", kPingShown + "> PONG :a"s},
      {"PING :a\0QUIT"s, kPingShown + "> PONG :a"s},
      {":a\nQUIT!u@h JOIN #room", "8|^C3* a QUIT ^C9has joined ^C3#room\n> WHOIS a",
       "2 me #room: @op bob a\nQUIT"},
  };
  for (const Case& row : table) Check(row);
  const std::string big(100000, 'x');
  Check({":" + big + "!u@h JOIN #room",
         "8|^C3* " + big + " ^C9has joined ^C3#room\n> WHOIS " + big.substr(0, kLongestLine - 6),
         "2 me #room: @op bob " + big});
  RoomStage stage;
  stage.connection.wsChat_DataArrival(":srv 372 me :a\r\n:srv 372 me :b");
  EXPECT_EQ(stage.Taken(), "1|a");
  // While connecting, no colon is put behind a line.
  stage.Dial();
  stage.Taken();
  stage.Receive("HELLO");
  EXPECT_EQ(stage.Taken(), "1|ERROR : HELLO");
}

TEST(ResponseParser, FollowsTheOptions) {
  RoomStage stage;
  stage.options.timestampChatLines = true;
  stage.options.noticesToStatus = true;
  stage.options.messagesToStatus = true;
  for (const char* line : {":a NOTICE me :n", ":a PRIVMSG me :m", ":a PRIVMSG #room :r",
                           ":a PRIVMSG #room :\001ACTION x\001", ":a PRIVMSG me :\001TIME\001"}) {
    stage.Receive(line);
  }
  const std::string time = "|^C15[^C113:07pm^C15] ";
  EXPECT_EQ(stage.Taken(),
            "1" + time + "^C5-a- n\ncall\n1" + time +
                "^C11a tells you, ^C15'^C11m^C15'|^C11(To reply type /msg a text)\n2" + time +
                "^C1<a> r\n2|^C14* a x\001\n1" + time +
                "^C11a sends a CTCP request, which is not answered: TIME");
}

}  // namespace
}  // namespace brindle
