// The whole window against a server that does what it should not: what is shown, and every byte
// that is sent in answer.
#include <array>

#include "meeting.h"

namespace brindle::test {
namespace {

using std::string_literals::operator""s;

const std::string kPing = "\n[SERVER PING]";

// What is added to the status view and to the room view, and the bytes that are sent.
using Effect = std::array<std::string, 3>;

struct HostileTest : testing::Test, ScriptedSession {
  // Sends each packet a while after the one before, and waits until all that they can lead to has
  // happened: lines are handled and shown in their order, so a last PING and text mark the end.
  Effect EffectOf(const Texts& packets) {
    const std::string mark = "mark " + std::to_string(++marks);
    for (const std::string& packet : packets) {
      server.Send(packet);
      LetTicksPass(packets.size() > 1 ? 2 : 0);
    }
    server.Send("PING :" + mark + "\r\n:s 372 me :" + mark + "\r\n");
    Effect effect;
    effect[2] =
        WithoutEnd(server.TakeReceivedUpTo("PONG :" + mark + "\r\n"), "PONG :" + mark + "\r\n");
    EXPECT_TRUE(window.ShowsInStatus(QString::fromStdString("\n" + mark)));
    effect[0] = WithoutEnd(Added(window.Status(), status), kPing + "\n" + mark);
    effect[1] = Added(window.Room(), room);
    return effect;
  }
  static std::string Added(const std::string& now, std::string& before) {
    EXPECT_TRUE(now.starts_with(before)) << now;
    return now.substr(std::exchange(before, now).size());
  }
  static std::string WithoutEnd(const std::string& text, const std::string& end) {
    EXPECT_TRUE(text.ends_with(end)) << text;
    return text.substr(0, text.size() - std::min(end.size(), text.size()));
  }

  std::string status, room;
  int marks = 0;
};

TEST_F(HostileTest, WhateverComesWeSendOnlyWhatWeMean) {
  const std::string pong = "PONG :tok\r\n";
  Texts bytes;
  for (const char byte : ":s 372 me :gr\xC3\xBC\xC3\x9F\r\nPING :tok\r\n"s) bytes.push_back({byte});
  const struct {
    Texts packets;
    Effect effect;
  } table[] = {
      {{""}, {"\n* Connecting to 127.0.0.1\nhi", "", ""}},
      {bytes, {"\ngr\u00FC\u00DF" + kPing, "", pong}},
      {{":s 372 me :first ", "half\r\n"}, {"\nfirst half", "", ""}},
      {{"PING :t", "ok\r", "\n"}, {kPing, "", pong}},
      {{":b!u@h PRIVMSG me :x ", ":s 001 evil :y\r\n"},
       {"", "\nb tells you, 'x :s 001 evil :y'\n(To reply type /msg b text)", ""}},
      {{":s 372 me :" + std::string(100000, 'x'), std::string(100000, 'y'), "\r\nPING :tok\r\n"},
       {kPing, "", pong}},
      {{"PING :tok\rQUIT\r\n"}, {kPing, "", pong}},
      {{"PING :tok\nJOIN #x\r\n"}, {kPing, "", pong}},
      {{"PING :tok\0JOIN #x\r\n"s}, {kPing, "", pong}},
      {{":me!u@h JOIN #bad\nQUIT\r\n"}, {kRule, "\n* Now talking in #bad QUIT", ""}},
      {{":me!u@h JOIN #r\rQUIT\r\n"},
       {kRule, "\n* Parted\n* Now talking in #r QUIT", "PART #bad\r\n"}},
      {{":e\nQUIT!u@h JOIN #r\rQUIT\r\n"}, {"", "\n* e QUIT has joined #r QUIT", "WHOIS e\r\n"}},
      {{":b!u@h PRIVMSG me :\001VERSION\001\r\n"},
       {"", "\nb sends a CTCP request, which is not answered: VERSION", ""}},
      {{":s 372 me :a\0b\rc\nd\xE2\x80\xA8"
        "e\r\n"s},
       {"\nab c d e", "", ""}},
      {{":s 372 me :%n%s ../../etc <b>\r\n"}, {"\n%n%s ../../etc <b>", "", ""}},
  };
  for (const auto& row : table) {
    EXPECT_EQ(EffectOf(row.packets), row.effect) << testing::PrintToString(row.packets[0]);
  }
  window.ShowTab(Tab::kInfo);
  window.Type("txtInfoAOLSN", "JaneD");
  window.Type("cmbServers", "bot");
  window.Choose("mnuCommandsList");
  window.Leave();
  EXPECT_EQ(server.TakeReceivedUpTo("QUIT\r\n"), "PRIVMSG #r\r\nPRIVMSG #r\r\nQUIT\r\n");
}

TEST_F(HostileTest, TheEndIsToldOnce) {
  const struct {
    const char* lastWords;
    const char* trouble;
  } table[] = {
      {"ERROR :Closing Link: bye\r\n", "Closing Link: bye"},
      {"ERROR :Closing Link: bye\r\n:s 372 me :more\r\n", "Closing Link: bye"},
      {":s 372 me :half", "The server closed the connection."},
      {"", "The server closed the connection."},
  };
  int ends = 0;
  for (const auto& row : table) {
    if (++ends > 1) Register();
    server.Send(row.lastWords);
    server.Close();
    EXPECT_TRUE(window.Tells("lblConnectTrouble", row.trouble)) << row.lastWords;
    EXPECT_TRUE(WaitUntil([&] { return Count(window.Room(), kGone) >= ends; }, 5000));
    LetTicksPass(3);
    EXPECT_EQ(Count(window.Room(), kGone), ends) << row.lastWords;
    EXPECT_EQ(Count(window.Status(), kGone), ends) << row.lastWords;
    EXPECT_EQ(window.Text("cmdConnect"), "Connect");
  }
  // The user's own end of an attempt is no trouble.
  window.Connect("me", "", server.Port());
  server.TakeReceivedUpTo("_0.5.85\r\n");
  EXPECT_FALSE(window.Find<QWidget>("cmdConnect").isEnabled());
  window.Click("cmdConnectCancel");
  EXPECT_TRUE(window.Find<QWidget>("cmdConnect").isEnabled());
  EXPECT_FALSE(window.Find<QWidget>("cmdConnectCancel").isVisible());
  EXPECT_TRUE(WaitUntil([&] { return Count(window.Room(), kGone) == ends + 1; }, 5000));
  EXPECT_EQ(window.Text("lblConnectTrouble"), "");
}

}  // namespace
}  // namespace brindle::test
