// The whole window against a server that does what it should not: what is shown, and every byte
// that is sent in answer.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QListView>
#include <QRegularExpression>

#include "support/scripted_server.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {
namespace {

using std::string_literals::operator""s;

constexpr const char* kLogin = "NICK me\r\nUSER plenty of excellent qel_0.5.85\r\n";
constexpr const char* kRule =
    "{#c0c0c0}-----{#808080}----------{#c0c0c0}----------------------------------------"
    "{#808080}----------{#c0c0c0}-----";
constexpr const char* kGreeting =
    "{#00ff00}You are now connected. To enter a channel locate the channel listbox on the right "
    "and double click a room name.";
constexpr const char* kPing = "{#ff00ff}[{#008080}SERVER PING{#ff00ff}]";
constexpr const char* kRefused = "{#ff0000}* ERROR : The server closed the connection.";
constexpr const char* kDisconnected = "{#ff0000}Disconnected...";

// What some bytes from the server have led to.
struct Effect {
  std::string status;  // added to the status view
  std::string room;    // added to the room view
  std::string sent;    // bytes sent to the server
  friend bool operator==(const Effect&, const Effect&) = default;
};
std::ostream& operator<<(std::ostream& out, const Effect& effect) {
  return out << "\nstatus: " << testing::PrintToString(effect.status)
             << "\nroom: " << testing::PrintToString(effect.room)
             << "\nsent: " << testing::PrintToString(effect.sent);
}

struct Case {
  std::string bytes;
  Effect effect;
};

class HostileServerTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(server_.Port(), 0);
    window_.Connect("me", "", server_.Port());
    ASSERT_EQ(server_.TakeReceivedUpTo("_0.5.85\r\n"), kLogin);
    server_.Send(":s 001 me :hi\r\n");
    ASSERT_TRUE(window_.ShowsInStatus("hi"));
    EffectOf("");
  }

  // Sends `bytes` and waits until all that they can lead to has happened: lines are handled and
  // shown in the order in which they come, so a last PING and a last text mark the end.
  Effect EffectOf(std::string_view bytes) {
    const std::string mark = "mark " + std::to_string(++marks_);
    server_.Send(bytes);
    server_.Send("PING :" + mark + "\r\n:s 372 me :" + mark + "\r\n");
    std::string sent = server_.TakeReceivedUpTo("PONG :" + mark + "\r\n");
    EXPECT_TRUE(WaitUntil([&] { return window_.Status().ends_with("}" + mark); }, 20000));
    Effect effect;
    effect.status = Added(window_.Status(), status_);
    effect.room = Added(window_.Room(), room_);
    effect.sent = WithoutEnd(std::move(sent), "PONG :" + mark + "\r\n");
    effect.status =
        WithoutEnd(std::move(effect.status), "\n" + std::string(kPing) + "\n{#000000}" + mark);
    return effect;
  }

  void ExpectEffects(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
      EXPECT_EQ(EffectOf(one.bytes), one.effect) << testing::PrintToString(one.bytes);
    }
  }

  void EnterRoom(const std::string& room) {
    EXPECT_EQ(EffectOf(":me!u@h JOIN :" + room + "\r\n").sent, "");
  }

  WindowDriver window_;
  ScriptedServer server_;

 private:
  static std::string Added(const std::string& now, std::string& before) {
    EXPECT_TRUE(now.starts_with(before)) << now;
    std::string added = now.substr(std::min(before.size(), now.size()));
    before = now;
    return added;
  }
  static std::string WithoutEnd(std::string text, const std::string& end) {
    EXPECT_TRUE(text.ends_with(end)) << text;
    if (text.ends_with(end)) text.resize(text.size() - end.size());
    return text;
  }

  std::string status_;
  std::string room_;
  int marks_ = 0;
};

TEST_F(HostileServerTest, LinesThatSayTooLittle) {
  const std::string greeting = "\n\n"s + kGreeting;
  std::vector<Case> cases = {
      {"\r\n", {"\n{#000000}ERROR : :", "", ""}},
      {":\r\n", {"\n{#000000}ERROR : :", "", ""}},
      {" \r\n", {"\n{#0000ff}NOT PARSED :  :", "", ""}},
      {"PING\r\n", {"\n{#000000}ERROR : PING:", "", ""}},
      {":s PING\r\n", {"\n"s + kPing, "", "PONG :\r\n"}},
      {"PING x\r\n", {"\n"s + kPing, "", "PONG :x\r\n"}},
      {":s PING x :y z\r\n", {"\n"s + kPing, "", "PONG :y z\r\n"}},
      {"JOIN #room\r\n", {"\n{#0000ff}NOT PARSED : JOIN #room:", "", ""}},
      {": JOIN #room\r\n", {}},
      {":!u@h JOIN #room\r\n", {}},
      {":n!u@h QUIT\r\n", {"", "\n{#0000ff}* n has quit.", ""}},
      {":s 251\r\n", {"\n", "", ""}},
      {":s 253\r\n", {"\n", "", ""}},
      {":s 372\r\n", {"\n", "", ""}},
      {":s 332 me\r\n", {"", "\n{#008000}* Topic is ''", ""}},
      {":s 353 me = #room\r\n", {}},
      {":s 366\r\n", {"", "\n"s + kRule, ""}},
      {":s 376\r\n", {greeting, "", ""}},
      {":s 422\r\n", {greeting, "", ""}},
      {":s 999\r\n", {"\n{#000000}IS NUMERIC : :s 999", "", ""}},
      {":s 1\r\n", {"\n{#000000}IS NUMERIC : :s 1", "", ""}},
      {":s WALLOPS\r\n", {"\n{#0000ff}NOT PARSED : :s WALLOPS", "", ""}},
      // A line with too little ends only itself.
      {":n!u@h JOIN\r\n:s 372 me :on\r\n", {"\n{#000000}on", "", ""}},
  };
  for (const char* word : {"AUTH", "MODE",    "JOIN", "KICK",   "KICK #room", "NICK",   "NOTICE",
                           "PART", "PRIVMSG", "001",  "332",    "353",        "353 me", "353 me =",
                           "471",  "471 me",  "474",  "474 me", "002",        "318"}) {
    cases.push_back({":n!u@h "s + word + "\r\n", {}});
  }
  for (const char* word : {"JOIN", "QUIT", "001", "433", "PRIVMSG", "ERROR"}) {
    cases.push_back({word + "\r\n"s, {"\n{#000000}ERROR : "s + word + ":", "", ""}});
    cases.push_back({":"s + word + "\r\n", {"\n{#000000}ERROR : :"s + word, "", ""}});
  }
  ExpectEffects(cases);

  Effect another = EffectOf(":s 433\r\n");
  EXPECT_TRUE(QRegularExpression("^NICK Brindle[1-9]\\d{0,2}\r\n$")
                  .match(QString::fromStdString(another.sent))
                  .hasMatch())
      << another;
  EXPECT_EQ(another.status, "\n");
  EXPECT_EQ(EffectOf(":s 465\r\n"), (Effect{"\n", "", ""}));
  EXPECT_EQ(window_.ConnectButton(), "Connect");
}

TEST_F(HostileServerTest, NothingReceivedAddsALineOfItsOwn) {
  const std::string joined = " {#00ff00}has joined {#008000}#r";
  ExpectEffects({
      {"PING :tok\rQUIT\r\n", {"\n"s + kPing, "", "PONG :tok\r\n"}},
      {"PING :tok\nJOIN #x\r\n", {"\n"s + kPing, "", "PONG :tok\r\n"}},
      {"PING :tok\0JOIN #x\r\n"s, {"\n"s + kPing, "", "PONG :tok\r\n"}},
      {"PING \rQUIT\r\n", {"\n"s + kPing, "", "PONG :\r\n"}},
      {":e\rQUIT!u@h JOIN #r\r\n", {"", "\n{#008000}* e QUIT" + joined, "WHOIS e\r\n"}},
      {":e\nQUIT!u@h JOIN #r\r\n", {"", "\n{#008000}* e QUIT" + joined, "WHOIS e\r\n"}},
      {":e\0QUIT!u@h JOIN #r\r\n"s, {"", "\n{#008000}* eQUIT" + joined, "WHOIS e\r\n"}},
      {":s 372 me :a\0b\rc\nd\r\n"s, {"\n{#000000}ab c d", "", ""}},
      {":s 372 me :%n%s%08x ../../etc\r\n", {"\n{#000000}%n%s%08x ../../etc", "", ""}},
  });
  EnterRoom("#bad\nQUIT :x");
  const Effect moved = EffectOf(":me!u@h JOIN #r\rQUIT\r\n");
  EXPECT_EQ(moved.sent, "PART #bad\r\n");
  window_.ShowTab(Tab::kInfo);
  window_.Type("txtInfoAOLSN", "JaneD");
  window_.Type("cmbServers", "bot");
  window_.Choose("mnuCommandsList");
  window_.ShowTab(Tab::kConnection);
  window_.Click("cmdConnect");
  EXPECT_EQ(server_.TakeReceivedUpTo("QUIT\r\n"), "PRIVMSG #r\r\nPRIVMSG #r\r\nQUIT\r\n");
}

TEST_F(HostileServerTest, TextsThatHurtViews) {
  EnterRoom("#r");
  std::string manyCodes;
  std::string manyShown;
  for (int i = 0; i < 1000; ++i) {
    manyCodes +=
        "\x03"
        "4x\x03"
        "3,1y";
    manyShown += "{#ff0000}x{#008000}y";
  }
  const std::string said = "\n{#000000}<b> ";
  const std::vector<std::pair<std::string, std::string>> texts = {
      {"", said},
      {"\x03", said},
      {"a\x03,", said + "a,"},
      {"\x03"
       "4,",
       said + "{#ff0000},"},
      {"\x03"
       "4,x",
       said + "{#ff0000},x"},
      {"\x03"
       "4,123x",
       said + "{#ff0000}3x"},
      {"\x03"
       "99x\x03"
       "100y",
       said + "x{#008080}0y"},
      {"\x03"
       "7x\x03"
       "23y\x03"
       "0z",
       said + "{#ff7d00}x{#808000}y{#000000}z"},
      {"\x02"
       "bold\x1F under\x0F plain",
       said + "bold under plain"},
      {"\x04"
       "ff00",
       said + "ff00"},
      {manyCodes, said + manyShown},
      {"\xEF\xB7\x90"
       "a\xEF\xB7\x91"
       "b",
       said + "ab"},
      {"a\xE2\x80\xA8"
       "b\xE2\x80\xA9"
       "c\xC2\x85"
       "d\ve\ff",
       said + "a b c d e f"},
      {"\xE2\x80\xAE"
       "abc",
       said + "\xE2\x80\xAE"
              "abc"},
      {"\xED\xA0\x80", said + "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},
      {"<b>&amp;</b>", said + "<b>&amp;</b>"},
      {":s 001 you :spoofed", said + ":s 001 you :spoofed"},
      {"\001", said},
      {"\001\001", said},
      {"\001ACTION", "\n{#808080}* b "},
      {"\001ACTION\001", "\n{#808080}* b "},
      {"\001ACTION \001ACTION x\001\001", "\n{#808080}* b ACTION x"},
      {"\001VERSION\001", said + "VERSION"},
  };
  for (const auto& [text, shown] : texts) {
    EXPECT_EQ(EffectOf(":b!u@h PRIVMSG #r :" + text + "\r\n"), (Effect{"", shown, ""}))
        << testing::PrintToString(text);
  }
}

TEST_F(HostileServerTest, RepliesThatComeAgainAndOutOfOrder) {
  const std::string talking = "\n{#008000}* Now talking in #r";
  ExpectEffects({
      {":me!u@h JOIN #r\r\n", {"\n"s + kRule, talking, ""}},
      {":s 353 me = #r :@op +voice  me \r\n", {}},
      {":me!u@h JOIN #R\r\n", {"\n"s + kRule, "\n{#008000}* Now talking in #R", ""}},
      {":s 353 me = #r :@op me\r\n:s 353 me = #r :@op me\r\n", {}},
      {":s 001 you :again\r\n", {"\n{#000000}again", "", ""}},
      {":s 376 you :end\r\n", {"\n{#000000}end\n"s + kGreeting, "", ""}},
      {":me!u@h JOIN #r\r\n",
       {"", "\n{#008000}* me {#00ff00}has joined {#008000}#r", "WHOIS me\r\n"}},
  });
  EXPECT_EQ(window_.Who(), "Who's here (5) @op me @op me me");
  EXPECT_EQ(window_.App().CurrentSession().currentNick, "you");
}

TEST_F(HostileServerTest, ALineCutByALongPauseIsLostInBothHalves) {
  const std::vector<std::tuple<std::string, std::string, Effect>> cases = {
      {":s 372 me :first ", "half\r\n", {}},
      {"PING :a", "b\r\n", {}},
      {":s 372 me :x", "PING :evil\r\n", {}},
      {":b!u@h PRIVMSG me :x ", ":s 001 evil :y\r\n", {}},
      {":s 372 me :x", "\r\n", {}},
      {":s 372 me :x\r", "\nPING :next\r\n", {"\n"s + kPing, "", "PONG :next\r\n"}},
      {":s 372 me :x\r", "y\r\nPING :next\r\n", {"\n"s + kPing, "", "PONG :next\r\n"}},
      {":s 372 me :whole\r\nPING :a", "b\r\n", {"\n{#000000}whole", "", ""}},
  };
  for (const auto& [first, second, effect] : cases) {
    server_.Send(first);
    LetTicksPass(12);  // the window waits 50 ms
    EXPECT_EQ(EffectOf(second), effect) << first << " | " << second;
  }
}

TEST_F(HostileServerTest, ALineCutByShortPausesIsWhole) {
  const std::string line = ":s 372 me :gr\xC3\xBC\xC3\x9F\r\nPING :token\r\n";
  const Effect whole = {"\n{#000000}gr\xC3\xBC\xC3\x9F\n"s + kPing, "", "PONG :token\r\n"};
  for (const auto& [piece, pauseMs] : {std::pair<size_t, int>{1, 1}, {9, 20}}) {
    // A stall of the machine makes a long pause of a short one: then the attempt says nothing.
    bool judged = false;
    for (int attempt = 0; attempt < 50 && !judged; ++attempt) {
      qint64 longest = 0;
      QElapsedTimer sinceSent;
      sinceSent.start();
      for (size_t at = 0; at < line.size(); at += piece) {
        server_.Send(line.substr(at, piece));
        longest = std::max(longest, sinceSent.restart());
        WaitUntil([&] { return sinceSent.hasExpired(pauseMs - 1); }, 1000);
      }
      const Effect effect = EffectOf("");
      judged = longest < 40;
      if (judged) {
        EXPECT_EQ(effect, whole) << piece;
      }
    }
    EXPECT_TRUE(judged) << "this machine never keeps a pause of " << pauseMs << " ms";
  }
}

TEST_F(HostileServerTest, ALineWithoutEndIsDropped) {
  server_.Send(":s 372 me :" + std::string(100000, 'x'));
  LetTicksPass(12);
  server_.Send(std::string(100000, 'y'));
  LetTicksPass(12);
  EXPECT_EQ(EffectOf("\r\nPING :next\r\n"), (Effect{"\n"s + kPing, "", "PONG :next\r\n"}));
  const std::string longest(16000, 'z');
  EXPECT_EQ(EffectOf(":s 372 me :" + longest + "\r\n"), (Effect{"\n{#000000}" + longest, "", ""}));
}

TEST_F(HostileServerTest, FiftyThousandNames) {
  constexpr int kLines = 1000;
  constexpr int kNamesInALine = 50;
  EnterRoom("#r");
  window_.ShowTab(Tab::kStatus);
  std::string reply;
  for (int line = 0; line < kLines; ++line) {
    reply += ":s 353 me = #r :";
    for (int i = 0; i < kNamesInALine; ++i) {
      reply += "nick" + std::to_string(line * kNamesInALine + i) + " ";
    }
    reply += "\r\n";
  }
  QElapsedTimer taken;
  taken.start();
  EXPECT_EQ(EffectOf(reply), Effect());
  EXPECT_EQ(window_.Text("lblWhoshere"), "Who's here (50000)");
  const QAbstractItemModel& names = *window_.Find<QListView>("lstWho").model();
  EXPECT_EQ(names.index(49999, 0).data().toString(), "nick49999");
  EXPECT_EQ(EffectOf(":nick49999!u@h QUIT :x\r\n"),
            (Effect{"", "\n{#0000ff}* nick49999 has quit.", ""}));
  EXPECT_EQ(window_.Text("lblWhoshere"), "Who's here (49999)");
  EXPECT_LT(taken.elapsed(), 10000);
}

TEST_F(HostileServerTest, TheEndIsToldOnce) {
  const std::vector<std::pair<std::string, std::string>> lastWords = {
      {"ERROR :Closing Link: bye\r\n", ""},
      {"ERROR :Closing Link: bye\r\n:s 372 me :more\r\n", "\n{#000000}more"},
      {":s 372 me :half", "ERROR"},
      {"", "ERROR"},
  };
  std::string expected = window_.Status();
  std::string room = window_.Room();
  for (size_t i = 0; i < lastWords.size(); ++i) {
    const auto& [words, shown] = lastWords[i];
    SCOPED_TRACE(words);
    if (i > 0) {
      window_.Connect("me", "", server_.Port());
      EXPECT_EQ(server_.TakeReceivedUpTo("_0.5.85\r\n"), kLogin);
      server_.Send(":s 001 me :hi\r\n");
      expected += "\n{#008000}* Connecting to 127.0.0.1\n{#000000}hi";
      ASSERT_TRUE(WaitUntil([&] { return window_.Status() == expected; }, 5000));
    }
    server_.Send(words);
    server_.Close();
    ASSERT_TRUE(server_.WaitForClose());
    if (shown == "ERROR") {
      expected += "\n"s + kRefused + "\n\n" + kDisconnected;
    } else {
      expected += "\n"s + kDisconnected + shown;
    }
    room += "\n"s + kDisconnected;
    WaitUntil([&] { return window_.Status() == expected && window_.Room() == room; }, 5000);
    LetTicksPass(3);
    EXPECT_EQ(window_.Status(), expected);
    EXPECT_EQ(window_.Room(), room);
    EXPECT_EQ(window_.ConnectButton(), "Connect");
  }
}

TEST(HostileServerAtOnce, ClosesEveryConnection) {
  ScriptedServer server;
  server.RefuseAll();
  WindowDriver window;
  const std::string line = "\n{#008000}* Connecting to 127.0.0.1";
  const std::string error = "\n"s + kRefused + "\n";
  const std::string end = "\n"s + kDisconnected;
  std::string before;
  for (int i = 0; i < 3; ++i) {
    window.Connect("me", "", server.Port());
    const auto isWhole = [&] {
      return window.Status() == before + line + error + end ||
             window.Status() == before + error + line + end;
    };
    EXPECT_TRUE(WaitUntil(isWhole, 5000)) << window.Status();
    LetTicksPass(3);
    EXPECT_TRUE(isWhole()) << window.Status();
    EXPECT_EQ(window.ConnectButton(), "Connect");
    before = window.Status();
  }
}

}  // namespace
}  // namespace brindle::test
