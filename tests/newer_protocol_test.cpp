// What goes over the wire and is shown with servers that know more than RFC 1459.
#include <gtest/gtest.h>

#include "base/time_text.h"
#include "irc/message_tags.h"
#include "irc/sasl.h"
#include "support/talk_stage.h"

namespace brindle {
namespace {

const std::string kRegistration = "> NICK me\n> USER plenty of excellent qel_0.5.85";

// "LS x" is short for ":s CAP * LS :x", and so are the others of CAP; a numeric has no source.
void ReceiveEach(ChatStage& stage, const std::string& lines) {
  for (const std::string_view line : Split(lines, "\n")) {
    const size_t blank = line.find(' ');
    const std::string word(line.substr(0, blank));
    const bool isCap =
        word == "LS" || word == "ACK" || word == "NAK" || word == "NEW" || word == "DEL";
    stage.Receive(isCap ? ":s CAP * " + word + " :" + std::string(line.substr(blank + 1))
                  : IsAllDigits(word) ? ":s " + std::string(line)
                                      : std::string(line));
  }
}

// What was sent, and what the user reads; not what became of the controls.
std::string Told(ChatStage& stage) {
  std::string told;
  const std::string taken = stage.Taken();
  for (const std::string_view row : Split(taken, "\n")) {
    if (row.find("ERROR :") != std::string::npos || row.starts_with("hint Disc")) continue;
    for (const char* start : {"> ", "hint ", "trouble ", "0|", "1|", "2|", "3|", "6|"}) {
      const bool isIt = row.starts_with(start) && row != "trouble ";
      if (isIt) told.append(told.empty() ? "" : "\n").append(row);
    }
  }
  return told;
}

// How the user has set things, by letters.
void Set(ChatStage& stage, std::string_view letters) {
  const auto has = [&](char letter) { return letters.find(letter) != std::string::npos; };
  Options& options = stage.options;
  options.useNewerProtocol = has('n');
  options.tellNickServ = has('k');
  stage.isSecure = has('t');
  stage.fields.server = has('l') ? " 127.0.0.1" : has('e') ? "127.0.0.1.x" : "irc.example";
  if (has('x')) options.connection.proxy = ProxyKind::kSocks5;
  if (has('c')) options.connection.proof = AccountProof::kCertificate;
  if (!has('p')) return;
  options.connection.proof = AccountProof::kPassword;
  options.connection.account = "acc";
  if (!has('0')) stage.parser.Agreement().SetPassword([] { return "pass word"; });
}

TEST(NewerProtocol, AgreesBeforeTheWelcome) {
  const std::string senseless = "1|^C4The server's answer about what it can do makes no sense: ";
  const std::string asked = "> CAP REQ :sasl\n> AUTHENTICATE PLAIN\n";
  const std::string answered = asked + "> AUTHENTICATE AGFjYwBwYXNzIHdvcmQ=\n";
  const std::string open =
      "The password is not sent over a connection that anybody can read: turn on TLS for this "
      "server.";
  const std::string noPassword =
      "There is no password for the account yet: set it on the Connection page of the options.";
  const std::string refused = "trouble Account refused: ";
  const std::string noSense = refused + "the server asks for a proof that makes no sense";
  const std::string listed = "LS sasl=PLAIN,EXTERNAL batch\nACK sasl";
  const std::string challenged = listed + "\nAUTHENTICATE +";
  const std::tuple<const char*, std::string, std::string> table[] = {
      {"n", ":s CAP * LS * :server-time=x sasl multi-prefix\nNEW batch\nLS cap-notify new",
       "> CAP REQ :batch cap-notify multi-prefix server-time"},
      {"n", "LS labeled-response", "> CAP END"},
      {"n", "LS away-notify batch\nNAK away-notify batch\nACK batch\nNAK away-notify",
       "> CAP REQ :away-notify batch\n> CAP REQ :away-notify\n> CAP REQ :batch\n> CAP END"},
      {"n", "LS \nLS batch", "> CAP END"},
      {"n", "421 * CAP :Unknown\n001 me :Hi", "6|Hi"},
      {"n", ":s CAP\n:s CAP * LS", senseless + ":s CAP\n" + senseless + ":s CAP * LS"},
      {"n", "LS \n001 me :Hi\nNEW sasl batch\nACK batch\nDEL batch\nNEW batch",
       "> CAP END\n6|Hi\n> CAP REQ :batch\n> CAP REQ :batch"},
      {"n", "LS sts=port=x",
       "1|^C4What the server says about TLS makes no sense: sts=port=x\n> CAP END"},
      {"n", "LS sts=preload,duration=5,port=6697 batch",
       "1|^C3* irc.example wants to be reached by TLS only\n1|^C3* Connecting to irc.example"},
      {"ptk", challenged + "\n900 me me!u@h acc :In\n903 me :Yes\n001 me :Hi",
       answered + "1|In\n1|Yes\n> CAP END\n6|Hi"},
      {"pl", challenged + "\n908 me EXTERNAL :x\n904 me :No: you",
       answered + "1|The server takes EXTERNAL\n" + refused + "No: you"},
      {"p", listed, "> CAP REQ :sasl\ntrouble " + open},
      {"plx", listed, "> CAP REQ :sasl\ntrouble " + open},
      {"pt", "LS sasl=EXTERNAL\nACK sasl",
       "> CAP REQ :sasl\n" + refused + "the server takes EXTERNAL, not PLAIN"},
      {"pt", listed + "\nAUTHENTICATE xyz", asked + noSense},
      {"pt", listed + "\n001 me :Hi", asked + refused + "the server began the session without it"},
      {"pt0", "LS sasl\nACK sasl\nAUTHENTICATE +", asked + "trouble " + noPassword},
      {"ct", challenged + "\n903 me :Yes",
       "> CAP REQ :sasl\n> AUTHENTICATE EXTERNAL\n> AUTHENTICATE +\n1|Yes\n> CAP END"},
      {"pt", "LS batch\n001 me :Hi\nNEW sasl",
       "> CAP END\nhint This server takes no proof of an account: you are here without it.\n6|Hi"},
      {"pkt", "451 CAP :?\n001 me :Hi", "> PRIVMSG NickServ :IDENTIFY acc pass word\n6|Hi"},
      {"pk", "001 me :Hi", "hint " + open + "\n6|Hi"},
  };
  for (const auto& [set, received, told] : table) {
    ChatStage stage;
    Set(stage, set);
    // Nothing is left of one session in the next.
    for (int session = 0; session < 2; ++session) {
      stage.Dial();
      EXPECT_TRUE(Told(stage).ends_with("> CAP LS 302\n" + kRegistration));
      ReceiveEach(stage, received);
      EXPECT_EQ(Told(stage), told) << set;
    }
  }
  // A lost session is made again, but not once the account is refused.
  ChatStage stage;
  Set(stage, "pt");
  stage.options.reconnect = true;
  stage.Register();
  stage.connection.wsChat_Error("lost");
  stage.Wait(10000);
  stage.Taken();
  stage.open = true;
  stage.connection.wsChat_Connect();
  ReceiveEach(stage, challenged + "\n904 me :No");
  stage.Wait(1000000);
  EXPECT_EQ(stage.Taken().find("\nconnect "), std::string::npos);
}

TEST(Sasl, CutsMessagesIntoPieces) {
  const std::pair<const char*, const char*> table[] = {
      {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xFF\xFE\xFB!", "//77IQ=="}};
  for (const auto& [bytes, text] : table) EXPECT_EQ(Base64(bytes), text);
  for (const size_t size : {0, 297, 300, 301}) {
    const std::vector<std::string> lines = AuthenticateLines(std::string(size, 'x'));
    EXPECT_EQ(lines.size(), size < 300 ? 1U : 2U) << size;
    EXPECT_EQ(lines.back() == "AUTHENTICATE +", size % 300 == 0) << size;
  }
}

TEST(MessageTags, AreCutOffBeforeTheLine) {
  const std::string many = "@a=1;x=" + std::string(MessageTags::kMostBytes - 8, 'x');
  const std::tuple<std::string, std::string, std::string> table[] = {
      {"@b=2;a=1;a=3  :s X", "3", ":s X"},
      {"@a=\\:\\s\\\\\\r\\n\\x\\ X", "; \\\r\nx", "X"},
      {"@;=;a;=a=9;b=a=2 X", "", "X"},
      {":s @a=1", "", ":s @a=1"},
      {many + " X", "1", "X"},
      {many + "x X", "", "X"},
  };
  for (const auto& [whole, value, rest] : table) {
    std::string_view line = whole;
    EXPECT_EQ(MessageTags::CutFrom(line).Value("a"), value) << whole.substr(0, 40);
    EXPECT_EQ(line, rest);
  }
  const std::time_t moment = 1795273627;
  EXPECT_GE(LocalTimeOf("2999-12-31T01:00:00Z").value().tm_year, 2998 - 1900);  // 2262 is no end
  EXPECT_EQ(LocalTimeOf("2026-11-21T15:07:07.250Z").value().tm_hour,
            std::localtime(&moment)->tm_hour);
  EXPECT_TRUE(LocalTimeOf("2026-11-21T23:59:60Z"));
  for (const char* senseless :
       {"2026-11-21T15:07:07+", "2026-11-21 15:07:07Z", "2026-02-30T15:07:07Z",
        "2026-11-21T24:07:07Z", "2026-11-21T15:07:07.1xZ"}) {
    EXPECT_FALSE(LocalTimeOf(senseless)) << senseless;
  }
}

// In "#room" of a server that grants all of these.
template <typename Stage = ChatStage>
struct NewerStage : Stage {
  explicit NewerStage(const std::string& granted) {
    this->options.useNewerProtocol = true;
    this->Dial();
    ReceiveEach(*this, "LS " + granted + "\nACK " + granted +
                           "\n001 me :Hi\n:me!u@h JOIN #room\n353 me = #room :@+op bob");
    this->Taken();
  }
};

TEST(NewerProtocol, ShowsOwnLinesAsTheServerRelaysThem) {
  const char* echo = "echo-message";
  const char* labels = "batch echo-message labeled-response";
  const std::string onItsWay = "\npanel Status - Connected : 1 line on its way\nbox ''";
  const std::tuple<const char*, const char*, std::string, std::string> table[] = {
      {echo, "hi", ":me!u@h PRIVMSG #ROOM :hi", "2|^C1<me> hi"},
      {echo, "/msg bob x", ":me!u@h PRIVMSG Bob :x", "0|^C11You tell bob, ^C15'^C11x^C15'"},
      {echo, "hi", "ERROR :Closing Link: x",
       "1|^C4Closing Link: x\ntrouble Closing Link: x\n"
       "2|^C1<me> hi^C14 (not confirmed by the server)"},
      {echo, "hi", "", "2|^C1<me> hi^C14 (not confirmed by the server)"},
      {labels, "hi",
       "@label=b1 BATCH +7 labeled-response\n@batch=7 :me!u@h PRIVMSG #room :hi\nBATCH -7",
       "2|^C1<me> hi"},
      {labels, "hi", "@label=b1 :s 404 me #room :You: no",
       "1|IS NUMERIC : :s 404 me #room :You: no\nhint #room: You: no\n"
       "2|^C1<me> hi^C14 (refused: You: no)"},
      // Said to oneself, a line comes twice.
      {labels, "/msg me x", ":me!u@h PRIVMSG me :x\n@label=b1 :me!u@h PRIVMSG me :x",
       "3|^C11me tells you, ^C15'^C11x^C15'|^C11(To reply type /msg me text)\n"
       "0|^C11You tell me, ^C15'^C11x^C15'"},
      // Said elsewhere under the same account, and never a password.
      {echo, "hi",
       ":me!u@h PRIVMSG #room :hi\n:me!u@h PRIVMSG #room :a\n:me!u@h PRIVMSG bob :b\n"
       ":me!u@h NOTICE bob :c\n:me!u@h PRIVMSG NickServ :IDENTIFY acc pass",
       "2|^C1<me> hi\n2|^C1<me> a\n0|^C11You tell bob, ^C15'^C11b^C15'"},
  };
  for (const auto& [granted, typed, received, shown] : table) {
    NewerStage stage(granted);
    bool isAwake = false;
    stage.lines.OnWaiting([&] { isAwake = true; });
    stage.outgoing.cmdSend_Click(typed, 1);
    EXPECT_TRUE(isAwake);
    const std::string sent = stage.Taken();
    EXPECT_EQ(sent.starts_with("> @label=b1 PRIVMSG "), granted == labels);
    EXPECT_EQ(sent.substr(sent.find('\n')), onItsWay);
    stage.Wait(received.empty() ? 9980 : 100);
    EXPECT_EQ(stage.Taken(), "");
    if (!received.empty()) ReceiveEach(stage, received);
    stage.Wait(20);
    EXPECT_EQ(Told(stage), shown) << received;
    stage.options.useNewerProtocol = false;
    stage.EnterRoom();
    stage.outgoing.cmdSend_Click("x", 1);
    EXPECT_EQ(stage.Taken(), Said("x") + "\nbox ''");
  }
}

TEST(NewerProtocol, KnowsWhichRequestsWereTaken) {
  // Milliseconds since the first of three lines, what happens then, and what is checked.
  const std::tuple<int, void (*)(ChatStage&), const char*> table[] = {
      {450, [](ChatStage& s) { s.Receive("@label=b2 :s 404 me #room :No"); }, "..x..."},
      {250, [](ChatStage& s) { s.connection.wsChat_Error("gone"), s.Wait(10); }, "..x.x."},
  };
  for (const auto& [milliseconds, end, checks] : table) {
    for (const char* answer : {":me!u@h PRIVMSG #room :!Bot send My Name 1", ":s ACK"}) {
      NewerStage<TalkStage> stage("batch echo-message labeled-response");
      stage.Request("x-x-x-");
      stage.Wait(milliseconds);
      stage.Receive(std::string("@label=b1 ") + answer);
      end(stage);
      EXPECT_EQ(stage.Checks(), checks);
    }
  }
}

TEST(NewerProtocol, ShowsWhatNewerServersTell) {
  NewerStage stage("account-notify away-notify batch message-tags multi-prefix server-time");
  EXPECT_EQ(stage.State(), "2 me #room: @op bob");
  // Who is away, of "op" and the one who was "bob".
  const std::pair<const char*, const char*> table[] = {
      {":bob!u@h AWAY :Gone fishing\n:x!u@h AWAY :y", "-B"},
      {":op!u@h ACCOUNT x\n@a=b :bob!u@h TAGMSG #room\n:s BATCH +1 netsplit\n:s BATCH", "-B"},
      {":bob!u@h CHGHOST v w\n:bob!u@h NICK rob", "-B"},
      {":rob!u@h AWAY", "--"},
      {"352 me #room u h s OP G@ :0 x\n352 me #room u h s rob H :0 x\n315 me", "O-"},
      {":me!u@h JOIN #room\n353 me = #room :@op", "--"},
  };
  for (const auto& [received, away] : table) {
    ReceiveEach(stage, received);
    const bool isBobAway = stage.who.IsAway("bob") || stage.who.IsAway("rob");
    EXPECT_EQ(std::string(stage.who.IsAway("@op") ? "O" : "-") + (isBobAway ? "B" : "-"), away);
  }
  EXPECT_TRUE(Told(stage).starts_with("2|^C11* bob is now known as rob.\n1|^C15---"));
  ReceiveEach(stage, "366 me #room :End");
  EXPECT_TRUE(Told(stage).ends_with("\n> WHO #room"));
  stage.options.timestampChatLines = true;
  const std::string then = ClockText(LocalTimeOf("2026-11-21T02:45:00Z").value());
  ReceiveEach(stage,
              "@time=2026-11-21T02:45:00Z :op!u@h PRIVMSG #room :a\n"
              "@time=senseless;x=\xE9 :op!u@h PRIVMSG #room :b");
  EXPECT_EQ(stage.Taken(),
            "2|^C15[^C11" + then + "^C15] ^C1<op> a\n2|^C15[^C113:07pm^C15] ^C1<op> b");
}

TEST(Ctcp, IsAnsweredAFewTimesAMinute) {
  RoomStage stage;
  stage.options.answerCtcp = true;
  const auto ask = [&stage](const std::string& text, const char* target = "me") {
    stage.Receive(":bob!u@h PRIVMSG " + std::string(target) + " :\001" + text + "\001");
    const std::string taken = stage.Taken();
    return taken.starts_with("> ") ? taken.substr(0, taken.find('\n')) : "";
  };
  EXPECT_EQ(ask("VERSION"), "> NOTICE bob :\001VERSION Brindle v0.5.85\001");
  EXPECT_TRUE(ask("TIME").ends_with(" 15:07:00\001"));
  EXPECT_EQ(ask("FINGER") + ask("VERSION", "#else"), "");
  const size_t longest = kLongestLine - stage.session.sourceLength;
  EXPECT_EQ(ask("ping " + std::string(600, 'x')).size(), 2 + longest);
  int answers = 3;
  for (int second = 0; second < 60; ++second) {
    if (!ask("PING 1").empty()) ++answers;
    stage.Wait(1000);
  }
  EXPECT_EQ(answers, 10);
}

}  // namespace
}  // namespace brindle
