// What goes over the wire and is shown with servers that know more than RFC 1459.
#include <gtest/gtest.h>

#include "base/time_text.h"
#include "irc/message_tags.h"
#include "irc/sasl.h"
#include "support/talk_stage.h"

namespace brindle {
namespace {

const std::string kRegistration = "> NICK me\n> USER plenty of excellent qel_0.5.85";
const std::string kOpenLine =
    "The password is not sent over a connection that anybody can read: turn on TLS for this "
    "server.";
// One that cannot be shown by accident in any other way.
const std::string kSecret = "pass word";

void ReceiveEach(ChatStage& stage, const std::string& lines) {
  for (const std::string_view line : Split(lines, "\n")) {
    if (!line.empty()) stage.Receive(line);
  }
}

// What was sent, shown as text, and said to the user; not what became of the controls.
std::string Told(ChatStage& stage) {
  std::string told;
  const std::string taken = stage.Taken();
  for (const std::string_view row : Split(taken, "\n")) {
    for (const char* start : {"> ", "hint ", "trouble A", "trouble T", "0|", "1|", "2|", "6|"}) {
      if (row.starts_with(start)) told.append(told.empty() ? "" : "\n").append(row);
    }
  }
  return told;
}

TEST(NewerProtocol, IsSilentWhileItsOptionsAreOff) {
  ChatStage stage;
  std::string sent;
  stage.Dial();
  ReceiveEach(stage,
              ":s CAP * LS :server-time sasl echo-message\n:s 001 me :Hi\n:me!u@h JOIN #room\n"
              "AUTHENTICATE +\n:bob!u@h PRIVMSG me :\001VERSION\001\nPING :x");
  stage.outgoing.cmdSend_Click("hi", 1);
  stage.outgoing.cmdSend_Click("/msg bob psst", 1);
  stage.voice.SayRequest("!Bot send me 1");
  stage.connection.cmdConnect_Click(stage.fields);
  const std::string taken = stage.Taken();
  for (const std::string_view row : Split(taken, "\n")) {
    if (row.starts_with("> ")) sent.append(row).append("\n");
  }
  EXPECT_EQ(sent, kRegistration +
                      "\n> PONG :x\n> PRIVMSG #room :hi\n> PRIVMSG bob :psst\n"
                      "> PRIVMSG #room :!Bot send me 1\n> PRIVMSG #room :^C1I was using ^C4Brindle "
                      "v0.5.85^C1 (a server helper). To learn more visit "
                      "http://www.brindle.example\n> QUIT\n");
}

// A talk with a server up to its welcome: what it says, and what comes of it.
struct Talk {
  const char* name;
  std::string received;
  std::string told;
  std::function<void(ChatStage&)> before = [](ChatStage&) {};
};

TEST(NewerProtocol, AsksWhatTheServerCanDo) {
  const std::string senseless = "1|^C4The server's answer about what it can do makes no sense: ";
  const Talk table[] = {
      {"several lines",
       ":s CAP * LS * :server-time=x sasl multi-prefix\n:s CAP * LS :cap-notify new",
       "> CAP REQ :cap-notify multi-prefix server-time"},
      {"labels come in batches", ":s CAP * LS :labeled-response", "> CAP END"},
      {"granted",
       ":s CAP * LS :batch labeled-response\n@a=b :s CAP me ACK :batch labeled-response ",
       "> CAP REQ :batch labeled-response\n> CAP END"},
      {"refused together, then one by one",
       "CAP * LS :away-notify batch\nCAP * NAK :away-notify batch\nCAP * ACK batch\n"
       "CAP * NAK away-notify",
       "> CAP REQ :away-notify batch\n> CAP REQ :away-notify\n> CAP REQ :batch\n> CAP END"},
      {"nothing of use", ":s CAP * LS :", "> CAP END"},
      {"does not know it", ":s 421 * CAP :Unknown\n:s 001 me :Hi", "6|Hi"},
      {"says nothing of it", ":s 001 me :Hi", "6|Hi"},
      {"no sense", ":s CAP\n:s CAP * WHAT :x\n:s CAP * LS",
       senseless + ":s CAP\n" + senseless + ":s CAP * WHAT :x\n" + senseless + ":s CAP * LS"},
      {"changes later",
       ":s CAP * LS :\n:s 001 me :Hi\n:s CAP me NEW :sasl batch\n:s CAP me ACK :batch\n"
       ":s CAP me DEL :batch\n:s CAP me NEW :batch",
       "> CAP END\n6|Hi\n> CAP REQ :batch\n> CAP REQ :batch"},
      {"TLS only, without sense", ":s CAP * LS :sts=port=x",
       "1|^C4What the server says about TLS makes no sense: sts=port=x\n> CAP END"},
      {"no TLS known", ":s CAP * LS :sts=duration=5,port=6697 batch",
       "1|^C3* irc.example wants to be reached by TLS only\n"
       "1|^C3* Connecting to irc.example"},
  };
  for (const Talk& row : table) {
    ChatStage stage;
    stage.options.useNewerProtocol = true;
    stage.Dial();
    EXPECT_TRUE(Told(stage).ends_with("> CAP LS 302\n" + kRegistration));
    ReceiveEach(stage, row.received);
    EXPECT_EQ(Told(stage), row.told) << row.name;
  }
}

TEST(NewerProtocol, ProvesAnAccountOrEnds) {
  const std::string listed = ":s CAP * LS :sasl=PLAIN,EXTERNAL batch\n:s CAP * ACK :sasl\n";
  const std::string asked = "> CAP REQ :sasl\n> AUTHENTICATE PLAIN";
  const std::string answered = asked + "\n> AUTHENTICATE AGFjYwBwYXNzIHdvcmQ=";
  const auto ended = [](const std::string& why) {
    return "\n1|^C4* ERROR : " + why + "|\ntrouble " + why + "\nhint Disconnected: " + why;
  };
  const auto open = [](ChatStage& s) { s.isSecure = false; };
  const auto local = [](ChatStage& s) { s.isSecure = false, s.fields.server = " 127.0.0.1"; };
  const auto nickServ = [](ChatStage& s) { s.options.tellNickServ = true; };
  const auto lures = [](ChatStage& s) { s.isSecure = false, s.fields.server = "127.0.0.1.x"; };
  const auto certificate = [](ChatStage& s) {
    s.options.connection.proof = AccountProof::kCertificate, s.options.connection.account = "";
  };
  const Talk table[] = {
      {"proven", listed + "AUTHENTICATE +\n:s 900 me me!u@h acc :You are in\n:s 903 me :Yes",
       answered + "\n1|You are in\n1|Yes\n> CAP END"},
      {"on this machine", listed + "AUTHENTICATE +", answered, local},
      {"refused", listed + "AUTHENTICATE +\n:s 908 me EXTERNAL :mechanisms\n:s 904 me :No: you",
       answered + "\n1|The server takes EXTERNAL" + ended("Account refused: No: you")},
      {"can be read", listed, "> CAP REQ :sasl" + ended(kOpenLine), open},
      {"on this machine, by a proxy", listed, "> CAP REQ :sasl" + ended(kOpenLine),
       [&](ChatStage& s) { local(s), s.options.connection.proxy = ProxyKind::kSocks5; }},
      {"no loopback", listed, "> CAP REQ :sasl" + ended(kOpenLine), lures},
      {"another mechanism", ":s CAP * LS :sasl=EXTERNAL\n:s CAP * ACK :sasl",
       "> CAP REQ :sasl" + ended("Account refused: the server takes EXTERNAL, not PLAIN")},
      {"no sense", listed + "AUTHENTICATE xyz",
       asked + ended("Account refused: the server asks for a proof that makes no sense")},
      {"twice", listed + "AUTHENTICATE +\nAUTHENTICATE +",
       answered + ended("Account refused: the server asks for a proof that makes no sense")},
      {"welcome before the proof", listed + ":s 001 me :Hi",
       asked + ended("Account refused: the server began the session without it")},
      {"no password", listed + "AUTHENTICATE +",
       asked + ended("There is no password for the account yet: set it on the Connection page of "
                     "the options."),
       [](ChatStage& s) { s.parser.Agreement().SetPassword(nullptr); }},
      {"by certificate", listed + "AUTHENTICATE +\n:s 903 me :Yes",
       "> CAP REQ :sasl\n> AUTHENTICATE EXTERNAL\n> AUTHENTICATE +\n1|Yes\n> CAP END", certificate},
      {"no accounts", ":s CAP * LS :batch\n:s 001 me :Hi",
       "> CAP END\nhint This server takes no proof of an account: you are here without it.\n"
       "> JOIN #x\n6|Hi"},
      {"NickServ", ":s 421 * CAP :?\n:s 001 me :Hi",
       "> PRIVMSG NickServ :IDENTIFY acc " + kSecret + "\n> JOIN #x\n6|Hi", nickServ},
      {"NickServ, where all can read", ":s 001 me :Hi", "hint " + kOpenLine + "\n> JOIN #x\n6|Hi",
       [&](ChatStage& s) { open(s), nickServ(s); }},
  };
  for (const Talk& row : table) {
    ChatStage stage;
    stage.options.connection.proof = AccountProof::kPassword;
    stage.options.connection.account = "acc";
    stage.isSecure = true;
    stage.parser.Agreement().SetPassword([] { return kSecret; });
    row.before(stage);
    stage.Dial();
    stage.connection.EnterRoom("#x");
    stage.Taken();
    ReceiveEach(stage, row.received);
    EXPECT_EQ(Told(stage), row.told) << row.name;
  }
}

TEST(Sasl, CutsMessagesIntoPieces) {
  const std::pair<const char*, const char*> table[] = {
      {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xFF\xFE\xFB!", "//77IQ=="}};
  for (const auto& [bytes, text] : table) EXPECT_EQ(Base64(bytes), text);
  for (const auto& [size, pieces] :
       {std::pair<size_t, size_t>{0, 1}, {297, 1}, {300, 2}, {301, 2}}) {
    const std::vector<std::string> lines = AuthenticateLines(std::string(size, 'x'));
    EXPECT_EQ(lines.size(), pieces) << size;
    EXPECT_LE(lines.front().size(), 413U);
    EXPECT_EQ(lines.back() == "AUTHENTICATE +", size % 300 == 0) << size;
  }
}

TEST(MessageTags, AreCutOffBeforeTheLine) {
  const std::string many = "@a=1;x=" + std::string(MessageTags::kMostBytes - 8, 'x');
  const struct {
    std::string line, value, rest;
  } table[] = {
      {"@a=1 :s X", "1", ":s X"},
      {"@b=2;a=1;a=3  :s X", "3", ":s X"},
      {"@a=\\:\\s\\\\\\r\\n\\x\\ X", "; \\\r\nx", "X"},
      {"@;=;a;=a=9;b=a=2 X", "", "X"},
      {":s @a=1", "", ":s @a=1"},
      {"@a=1", "1", ""},
      {many + " X", "1", "X"},
      {many + "x X", "", "X"},
  };
  for (const auto& row : table) {
    std::string_view line = row.line;
    EXPECT_EQ(MessageTags::CutFrom(line).Value("a"), row.value) << row.line.substr(0, 40);
    EXPECT_EQ(line, row.rest);
  }
  const std::time_t moment = 1795273627;
  const std::optional<std::tm> local = LocalTimeOf("2026-11-21T15:07:07.250Z");
  ASSERT_TRUE(local);
  EXPECT_EQ(ClockText(*local), ClockText(*std::localtime(&moment)));
  for (const char* senseless :
       {"", "2026-11-21T15:07:07", "2026-11-21 15:07:07Z", "2026-02-30T15:07:07Z",
        "2026-11-21T24:07:07Z", "2026-11-21T15:07:07.Z", "2026-11-21T15:07:07.1xZ", "1795273627"}) {
    EXPECT_FALSE(LocalTimeOf(senseless)) << senseless;
  }
}

// In "#room" of a server that grants all of these.
template <typename Stage = ChatStage>
struct NewerStage : Stage {
  explicit NewerStage(const std::string& granted) {
    this->options.useNewerProtocol = true;
    this->Dial();
    ReceiveEach(*this, ":s CAP * LS :" + granted + "\n:s CAP * ACK :" + granted +
                           "\n:s 001 me :Hi\n:me!u@h JOIN #room\n:s 353 me = #room :@+op bob");
    this->Taken();
  }
};

TEST(NewerProtocol, ShowsOwnLinesAsTheServerRelaysThem) {
  const std::string labels = "batch echo-message labeled-response";
  const std::string onItsWay = "\npanel Status - Connected : 1 line on its way\nbox ''";
  const std::string arrived = "panel Status - Connected\n";
  const struct {
    std::string granted, typed, sent, received, shown;
  } table[] = {
      {"echo-message", "hi", "> PRIVMSG #room :hi" + onItsWay, ":me!u@h PRIVMSG #ROOM :hi",
       arrived + "2|^C1<me> hi"},
      {"echo-message", "hi", "> PRIVMSG #room :hi" + onItsWay, ":me!u@h PRIVMSG #room :changed",
       arrived + "2|^C1<me> changed"},
      {"echo-message", "/msg bob x", "> PRIVMSG bob :x" + onItsWay, ":me!u@h PRIVMSG Bob :x",
       arrived + "0|^C11You tell bob, ^C15'^C11x^C15'"},
      {"echo-message", "hi", "> PRIVMSG #room :hi" + onItsWay, "",
       arrived + "2|^C1<me> hi^C14 (not confirmed by the server)"},
      {labels, "hi", "> @label=b1 PRIVMSG #room :hi" + onItsWay,
       "@label=b1 BATCH +7 labeled-response\n@batch=7 :me!u@h PRIVMSG #room :hi\nBATCH -7",
       arrived + "2|^C1<me> hi"},
      {labels, "hi", "> @label=b1 PRIVMSG #room :hi" + onItsWay,
       "@label=b1 :s 404 me #room :You: no",
       "1|IS NUMERIC : :s 404 me #room :You: no\nhint #room: You: no\n" + arrived +
           "2|^C1<me> hi^C14 (refused: You: no)"},
      // Said to oneself, a line comes twice.
      {labels, "/msg me yo", "> @label=b1 PRIVMSG me :yo" + onItsWay,
       ":me!u@h PRIVMSG me :yo\n@label=b1 :me!u@h PRIVMSG me :yo",
       "call\n3|^C11me tells you, ^C15'^C11yo^C15'|^C11(To reply type /msg me text)\n" + arrived +
           "0|^C11You tell me, ^C15'^C11yo^C15'"},
      {"batch labeled-response", "hi", "> @label=b1 PRIVMSG #room :hi\n2|^C1<me> hi\nbox ''",
       "@label=b1 :s ACK", ""},
      // Said elsewhere under the same account, and never a password.
      {"echo-message", " ", "",
       ":me!u@h PRIVMSG #room :a\n:me!u@h PRIVMSG bob :b\n:me!u@h NOTICE bob :c\n"
       ":me!u@h PRIVMSG NickServ :IDENTIFY acc pass",
       "2|^C1<me> a\n0|^C11You tell bob, ^C15'^C11b^C15'"},
  };
  for (const auto& row : table) {
    NewerStage stage(row.granted);
    bool isAwake = false;
    stage.lines.OnBusy([&] { isAwake = true; });
    stage.outgoing.cmdSend_Click(row.typed, 1);
    EXPECT_EQ(stage.Taken(), row.sent);
    EXPECT_EQ(isAwake, !row.sent.empty());
    if (row.received.empty()) {
      stage.Wait(9980);
      EXPECT_EQ(stage.Taken(), "");
    } else {
      ReceiveEach(stage, row.received);
    }
    stage.Wait(20);
    EXPECT_EQ(stage.Taken(), row.shown) << row.received;
  }
}

TEST(NewerProtocol, KnowsWhichRequestsWereTaken) {
  const std::string first = "@label=b1 :me!u@h PRIVMSG #room :!Bot send My Name 1";
  const struct {
    int milliseconds;  // since the first of three lines
    void (*end)(ChatStage&);
    const char* checks;
  } table[] = {
      {450, [](ChatStage& s) { s.Receive("@label=b2 :s 404 me #room :No"); }, "..x..."},
      {250, [](ChatStage& s) { s.connection.wsChat_Error("gone"), s.Wait(10); }, "..x.x."},
  };
  for (const auto& row : table) {
    NewerStage<TalkStage> stage("batch echo-message labeled-response");
    stage.Fill("x-x-x-");
    stage.Click();
    stage.Wait(row.milliseconds);
    stage.Receive(first);
    row.end(stage);
    EXPECT_EQ(stage.Checks(), row.checks);
  }
}

TEST(NewerProtocol, ShowsWhatNewerServersTell) {
  NewerStage stage("account-notify away-notify batch message-tags multi-prefix server-time");
  EXPECT_EQ(stage.State(), "2 me #room: @op bob");
  ReceiveEach(stage,
              ":bob!u@h AWAY :Gone fishing\n:op!u@h ACCOUNT x\n:x!u@h AWAY :y\n"
              "@a=b :bob!u@h TAGMSG #room\n:s BATCH +1 netsplit\n:bob!u@h CHGHOST v w\n:s BATCH");
  EXPECT_EQ(stage.Taken(), "");
  EXPECT_TRUE(stage.who.IsAway("bob") && !stage.who.IsAway("@op") && !stage.who.IsAway("x"));
  ReceiveEach(stage, ":bob!u@h NICK rob");
  EXPECT_TRUE(stage.who.IsAway("rob") && !stage.who.IsAway("bob"));
  ReceiveEach(stage, ":rob!u@h AWAY");
  EXPECT_FALSE(stage.who.IsAway("rob"));
  // Who went before we came.
  stage.Taken();
  ReceiveEach(stage, ":s 366 me #room :End");
  EXPECT_TRUE(Told(stage).ends_with("\n> WHO #room"));
  ReceiveEach(stage,
              ":s 352 me #room u h s OP G@ :0 x\n:s 352 me #room u h s rob H :0 x\n:s 315 me");
  EXPECT_TRUE(stage.who.IsAway("op") && !stage.who.IsAway("rob"));
  EXPECT_EQ(stage.Taken(), "");
  stage.options.timestampChatLines = true;
  const std::string then = ClockText(*LocalTimeOf("2026-11-21T02:45:00Z"));
  ReceiveEach(stage,
              "@time=2026-11-21T02:45:00Z :op!u@h PRIVMSG #room :a\n"
              "@time=senseless;x=\xE9 :op!u@h PRIVMSG #room :b");
  EXPECT_EQ(stage.Taken(),
            "2|^C15[^C11" + then + "^C15] ^C1<op> a\n2|^C15[^C113:07pm^C15] ^C1<op> b");
}

TEST(Ctcp, IsAnsweredAFewTimesAMinute) {
  ChatStage stage;
  stage.EnterRoom();
  stage.options.answerCtcp = true;
  const auto ask = [&stage](const std::string& text, const char* target = "me") {
    stage.Receive(":bob!u@h PRIVMSG " + std::string(target) + " :\001" + text + "\001");
    const std::string taken = stage.Taken();
    return taken.starts_with("> ") ? taken.substr(0, taken.find('\n')) : "";
  };
  EXPECT_EQ(ask("VERSION"), "> NOTICE bob :\001VERSION Brindle v0.5.85\001");
  EXPECT_TRUE(ask("TIME").ends_with(" 15:07:00\001"));
  EXPECT_EQ(ask("FINGER"), "");
  EXPECT_EQ(ask("VERSION", "#else"), "");
  EXPECT_EQ(ask("ping " + std::string(600, 'x')).size(),
            2 + kLongestLine - stage.session.sourceLength);
  EXPECT_EQ(ask("PING 1"), "");
  int answers = 3;
  for (int second = 0; second < 60; ++second) {
    if (!ask("PING 1").empty()) ++answers;
    stage.Wait(1000);
  }
  EXPECT_EQ(answers, 10);
}

}  // namespace
}  // namespace brindle
