// The real IRC servers that other tests rely on: that they start, behave as a server does, and end.

#include <gtest/gtest.h>

#include <QHostAddress>
#include <QTcpServer>

#include "support/irc_server.h"
#include "support/raw_client.h"
#include "support/wait.h"

namespace brindle::test {
namespace {

constexpr const char* kRoom = "#mailroom";

class IrcServerTest : public testing::TestWithParam<IrcServer::Kind> {
 protected:
  void SetUp() override {
    if (!IrcServer::IsInstalled(GetParam())) GTEST_SKIP() << "this server is not installed";
    ASSERT_TRUE(server_.Start()) << server_.Error().toStdString();
  }

  void RegisterBoth() {
    anna_.Begin(server_.Port());
    bert_.Begin(server_.Port());
    ASSERT_TRUE(anna_.WaitForWelcome());
    ASSERT_TRUE(bert_.WaitForWelcome());
  }

  IrcServer server_{GetParam()};
  RawClient anna_{"Anna"};
  RawClient bert_{"Bert"};
};

TEST_P(IrcServerTest, TwoUsersMeetTalkAndPart) {
  RegisterBoth();
  for (const QString& line : IrcServer::MotdLines()) {
    EXPECT_TRUE(anna_.WaitForLine(line.toStdString())) << line.toStdString();
  }
  ASSERT_TRUE(anna_.Join(kRoom));
  ASSERT_TRUE(bert_.Join(kRoom));
  ASSERT_TRUE(anna_.WaitForLine("JOIN :#mailroom"));

  bert_.Say(kRoom, "hello there");
  const auto heard = anna_.WaitForLine("PRIVMSG #mailroom :hello there");
  ASSERT_TRUE(heard);
  EXPECT_TRUE(heard->text.starts_with(":Bert!")) << heard->text;
  anna_.Say("Bert", "psst");
  EXPECT_TRUE(bert_.WaitForLine("PRIVMSG Bert :psst"));

  anna_.Send("KICK #mailroom Bert :out you go");
  EXPECT_TRUE(bert_.WaitForLine("KICK #mailroom Bert :out you go"));

  RawClient other("anna");
  EXPECT_FALSE(other.Connect(server_.Port()));
  EXPECT_TRUE(other.HasReceived(" 433 "));
}

TEST_P(IrcServerTest, ManyLinesAtOnceAreAllowed) {
  constexpr int kCount = 300;
  RegisterBoth();
  ASSERT_TRUE(anna_.Join(kRoom));
  ASSERT_TRUE(bert_.Join(kRoom));
  for (int i = 1; i <= kCount; ++i) bert_.Say(kRoom, "line " + std::to_string(i) + ".");
  for (int i = 1; i <= kCount; ++i) {
    ASSERT_TRUE(anna_.WaitForLine(":line " + std::to_string(i) + ".")) << i;
  }
  EXPECT_TRUE(bert_.IsConnected());
}

TEST_P(IrcServerTest, RoomsRefuseTheBannedAndTheOneTooMany) {
  RegisterBoth();
  ASSERT_TRUE(anna_.Join(kRoom));
  const auto setMode = [this](const std::string& mode, const std::string& answer) {
    anna_.Send("MODE #mailroom " + mode);
    return anna_.WaitForLine("MODE #mailroom " + answer).has_value();
  };
  ASSERT_TRUE(setMode("+b Bert!*@*", "+b"));
  EXPECT_FALSE(bert_.Join(kRoom));
  EXPECT_TRUE(bert_.HasReceived(" 474 Bert #mailroom "));

  ASSERT_TRUE(setMode("-b Bert!*@*", "-b"));
  ASSERT_TRUE(setMode("+l 1", "+l"));
  EXPECT_FALSE(bert_.Join(kRoom));
  EXPECT_TRUE(bert_.HasReceived(" 471 Bert #mailroom "));

  ASSERT_TRUE(setMode("+l 2", "+l"));
  EXPECT_TRUE(bert_.Join(kRoom));
}

TEST_P(IrcServerTest, OperatorsBanFromTheWholeServer) {
  RegisterBoth();
  ASSERT_TRUE(anna_.BecomeOperator(IrcServer::kOperatorName, IrcServer::kOperatorPassword));
  anna_.Send(GetParam() == IrcServer::Kind::kNgircd ? "GLINE *!*Bert@* 600 :no more"
                                                    : "KLINE Bert@* 600 :no more");
  EXPECT_TRUE(bert_.WaitForLine("ERROR :"));
  EXPECT_TRUE(bert_.WaitForClose());
  RawClient again("Bert");
  EXPECT_FALSE(again.Connect(server_.Port()));
  EXPECT_TRUE(again.WaitForClose());
}

TEST_P(IrcServerTest, TheEndIsNoticedAndTheNextStartKeepsThePort) {
  RegisterBoth();
  EXPECT_TRUE(server_.Stop());
  EXPECT_FALSE(server_.IsRunning());
  EXPECT_TRUE(anna_.WaitForLine("ERROR :"));
  EXPECT_TRUE(anna_.WaitForClose());

  const quint16 port = server_.Port();
  ASSERT_TRUE(server_.Start()) << server_.Error().toStdString();
  EXPECT_EQ(server_.Port(), port);
  RawClient carl("Carl");
  ASSERT_TRUE(carl.Connect(port));
  carl.SkipReceived();
  server_.Kill();
  EXPECT_TRUE(carl.WaitForClose());
  EXPECT_FALSE(carl.WaitForLine("ERROR :"));
}

TEST_P(IrcServerTest, NeverTakesAnotherProgramsPortForItsOwn) {
  ASSERT_TRUE(server_.Stop());
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress::LocalHost, server_.Port()));
  EXPECT_FALSE(server_.Start());
  EXPECT_FALSE(server_.IsRunning());
  EXPECT_FALSE(server_.Error().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Servers, IrcServerTest,
                         testing::Values(IrcServer::Kind::kNgircd, IrcServer::Kind::kInspircd),
                         [](const auto& server) {
                           return server.param == IrcServer::Kind::kNgircd ? "ngIRCd" : "InspIRCd";
                         });

TEST(IrcServerBans, HoldFromTheStart) {
  if (!IrcServer::IsInstalled(IrcServer::Kind::kInspircd)) GTEST_SKIP();
  IrcServer server(IrcServer::Kind::kInspircd, {.nicks = {"Mean*"}, .users = {"Rude@*"}});
  ASSERT_TRUE(server.Start()) << server.Error().toStdString();
  RawClient mean("Meanie");
  RawClient rude("Rude");
  RawClient fine("Fine");
  for (RawClient* client : {&mean, &rude, &fine}) client->Begin(server.Port());
  EXPECT_FALSE(mean.WaitForWelcome());
  EXPECT_TRUE(mean.HasReceived(" 432 "));
  EXPECT_FALSE(rude.WaitForWelcome());
  EXPECT_TRUE(rude.WaitForClose());
  EXPECT_TRUE(fine.WaitForWelcome());
}

TEST(WaitUntil, GivesUpAndSeesTheConditionComeTrue) {
  EXPECT_FALSE(WaitUntil([] { return false; }, 20));
  bool done = false;
  QTimer::singleShot(10, [&done] { done = true; });
  EXPECT_TRUE(WaitUntil([&done] { return done; }, 5000));
}

}  // namespace
}  // namespace brindle::test
