// Whole sessions with both kinds of real servers: what the user does, and what the views then show.
#include <QListView>
#include <algorithm>

#include "meeting.h"

namespace brindle::test {
namespace {

using std::string_literals::operator""s;

class SessionTest : public testing::TestWithParam<IrcServer::Kind> {
 protected:
  void SetUp() override { ASSERT_TRUE(server_.Start()) << server_.Error().toStdString(); }

  // `why` is what the user reads beside the button.
  void ExpectEnded(const std::string& why, int times) {
    EXPECT_TRUE(WaitUntil([&] { return Count(window_.Room(), kGone) == times; }, 5000));
    EXPECT_TRUE(window_.Tells("lblConnectTrouble", why)) << window_.Text("lblConnectTrouble");
    LetTicksPass(3);  // what comes too much would have time to show
    EXPECT_EQ(Count(window_.Room(), kGone), times);
    EXPECT_EQ(Count(window_.Status(), kGone), times);
    EXPECT_EQ(window_.Text("cmdConnect"), "Connect");
    EXPECT_EQ(window_.Text("barStatusPanel1"), "Status - Disconnected");
    EXPECT_EQ(window_.App().Window().windowTitle(), "Brindle v0.5.85");
    EXPECT_TRUE(window_.Find<QWidget>("txtConnectNick").isEnabled());
    EXPECT_EQ(window_.App().CurrentSession().currentRoom, "");
  }
  // A server may name the nicks in any order.
  bool IsHere(const std::string& nicks, const std::string& orNicks) {
    const auto here = [&] { return window_.Items("lstWho"); };
    return WaitUntil([&] { return here() == nicks || here() == orNicks; }, 5000);
  }

  IrcServer server_{GetParam()};
  WindowDriver window_{{kRoom, "#second"}};
  RawClient anna_{"Anna"};
  RawClient bert_{"Bert"};
};

TEST_P(SessionTest, TellsAllThatHappens) {
  anna_.Begin(server_.Port());
  bert_.Begin(server_.Port());
  ASSERT_TRUE(anna_.WaitForWelcome() && bert_.WaitForWelcome());
  ASSERT_TRUE(anna_.Join(kRoom) && anna_.Join("#second"));
  anna_.Send("TOPIC #mailroom :Mails: ask the bots");
  ASSERT_TRUE(anna_.WaitForLine("TOPIC #mailroom"));
  window_.Connect("Anna", "Wanda", server_.Port());
  ASSERT_TRUE(window_.ShowsInStatus("You are now connected."));
  EXPECT_TRUE(
      window_.App().Window().windowTitle().startsWith("Brindle v0.5.85 [NICK : Wanda] [CONN"));
  ASSERT_TRUE(window_.Join(0));
  EXPECT_TRUE(IsHere("@Anna Wanda", "Wanda @Anna")) << window_.Items("lstWho");

  ASSERT_TRUE(bert_.Join(kRoom));
  bert_.Say(kRoom, "hello: \0034,1red\003 and \002plain\002 gr\xC3\xBC\xC3\x9F");
  bert_.Say(kRoom, "gr\xFC\xDF\001");
  bert_.Say(kRoom, "\001ACTION waves: a hand\001");
  bert_.Send("NOTICE #mailroom :to the room");
  bert_.Say("Wanda", "psst: hey");
  bert_.Send("NICK Bertram");
  bert_.Send("PART #mailroom :bye");
  ASSERT_TRUE(bert_.Join(kRoom));
  anna_.Send("KICK #mailroom Bertram :out: you go");
  ASSERT_TRUE(bert_.WaitForLine("KICK #mailroom Bertram"));
  ASSERT_TRUE(bert_.Join(kRoom));
  bert_.Send("QUIT :gone");
  ASSERT_TRUE(window_.ShowsInRoom("Bertram has quit."));
  EXPECT_TRUE(IsHere("@Anna Wanda", "Wanda @Anna")) << window_.Items("lstWho");

  anna_.Send("KICK #mailroom Wanda :go");
  ASSERT_TRUE(window_.Tells(kHint, "You are no longer in #mailroom: kicked by Anna: go"));
  anna_.Send("MODE #mailroom +b Wanda!*@*");
  ASSERT_TRUE(anna_.WaitForLine("MODE #mailroom +b"));
  window_.AskToJoin(0);
  ASSERT_TRUE(window_.Tells(kHint, "#mailroom - Can't join, you are banned from this room."));
  anna_.Send("MODE #mailroom -b Wanda!*@*");
  ASSERT_TRUE(anna_.WaitForLine("MODE #mailroom -b"));
  ASSERT_TRUE(window_.Join(0) && window_.Join(1));
  ASSERT_TRUE(window_.ShowsInRoom("Wanda has left #mailroom"));
  EXPECT_TRUE(IsHere("@Anna Wanda", "Wanda @Anna")) << window_.Items("lstWho");
  window_.Leave();
  EXPECT_TRUE(anna_.WaitForLine("PRIVMSG #second :\0031I was using \0034Brindle v0.5.85"));
  EXPECT_TRUE(anna_.WaitForLine(" QUIT "));
  ExpectEnded("", 1);

  const std::string rule = kRule.substr(1);
  std::string room = window_.Room();
  const std::string statistics = "\n-irc.brindle.test- Connection statistics";  // ngIRCd's alone
  if (room.find(statistics) != room.npos) room = room.substr(0, room.find(statistics)) + kGone;
  EXPECT_EQ(room, Joined({"* Now talking in #mailroom",
                          "* Topic is 'Mails: ask the bots'",
                          rule,
                          "* Bert has joined #mailroom",
                          "<Bert> hello: red and plain gr\u00FC\u00DF",
                          "<Bert> gr\u00FC\u00DF",
                          "* Bert waves: a hand",
                          "-Bert- to the room",
                          "Bert tells you, 'psst: hey'",
                          "(To reply type /msg Bert text)",
                          "* Bert is now known as Bertram.",
                          "* Bertram has left #mailroom",
                          "* Bertram has joined #mailroom",
                          "* Anna says out: you go, then kicks Bertram from the channel.",
                          "* Bertram has joined #mailroom",
                          "* Bertram has quit.",
                          "* Anna says go, then kicks Wanda from the channel.",
                          "#mailroom - Can't join, you are banned from this room.",
                          "* Now talking in #mailroom",
                          "* Topic is 'Mails: ask the bots'",
                          rule,
                          "* Parted",
                          "* Now talking in #second",
                          rule,
                          "* Wanda has left #mailroom"}) +
                      kGone);
  const std::string status = window_.Status();
  size_t at = 0;
  for (const std::string& part : {"\n* Connecting to 127.0.0.1"s, "already in use"s, "Welcome"s,
                                  "Be kind to the bots,"s, "\nYou are now connected."s, kRule,
                                  "\n#mailroom - Can't join"s, kRule, kRule, std::string(kGone)}) {
    at = status.find(part, at);
    ASSERT_NE(at, std::string::npos) << part << " is missing in" << status;
  }
}

TEST_P(SessionTest, SeesTheServerEndAndRefuse) {
  ASSERT_TRUE(window_.Register("Wanda", server_.Port()) && window_.Join(0));
  ASSERT_TRUE(server_.Stop());
  ExpectEnded(GetParam() == IrcServer::Kind::kNgircd ? "Server going down" : "Closing link", 1);
  ASSERT_TRUE(server_.Start());
  ASSERT_TRUE(window_.Register("Wanda", server_.Port()) && window_.Join(0));
  EXPECT_EQ(window_.Items("lstWho"), "@Wanda");
  server_.Kill();
  ExpectEnded("The server closed the connection.", 2);
  window_.Connect("Wanda", "", server_.Port());
  ExpectEnded("Connection refused", 3);
}

INSTANTIATE_TEST_SUITE_P(Servers, SessionTest,
                         testing::Values(IrcServer::Kind::kNgircd, IrcServer::Kind::kInspircd),
                         [](const auto& server) {
                           return server.param == IrcServer::Kind::kNgircd ? "ngIRCd" : "InspIRCd";
                         });

}  // namespace
}  // namespace brindle::test
