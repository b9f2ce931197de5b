// The lists beside the chat: IRC servers, and who is here.
#include "irc/irc_servers.h"

#include <gtest/gtest.h>

#include "irc/who_list.h"
#include "support/stage.h"

namespace brindle {
namespace {

struct IrcServersTest : testing::Test {
  std::string Rows() const {
    std::string rows;
    for (const IrcServer& row : servers.Entries().Items()) {
      rows += row.host + " " + std::to_string(row.port) + "|";
    }
    return rows;
  }

  Stage stage;
  IrcServers servers{stage, stage};
};

TEST_F(IrcServersTest, AddsAnAnswerOrSaysWhatIsWrongWithIt) {
  const std::string noPort = "! No port entered. Please try again.";
  const std::string noServer = "! No server entered. Please try again.";
  const std::string notNumeric = "! The port should be numeric. Please try again.";
  const std::tuple<std::optional<std::string>, std::string, std::string> table[] = {
      {std::nullopt, "", noPort},
      {":6667", "", noServer},
      {"host:", "", noPort},
      {"host:1.2.3", "", notNumeric},
      {"My.Host:7000", "my.host 7000|", ""},
      {" My Host : 7 ", " my host  7|", ""},
      {"host:1:2:x", "host 1|", ""},
      {"host:3000000000", "host 0|", ""},
      {"[2001:DB8::1]:6697", "2001:db8::1 6697|", ""},
      {"[::1]x:6697", "", noServer},
  };
  std::string rows;
  for (const auto& [answer, added, notice] : table) {
    stage.answers = {answer};
    servers.cmdConnectAdd_Click();
    EXPECT_EQ(Rows(), rows += added);
    EXPECT_EQ(stage.Taken(),
              "? Enter the server and port. When you are done it should look something like this "
              ":\r\rirc.brindle.example:6667" +
                  (notice.empty() ? "" : "\n" + notice));
  }
}

TEST_F(IrcServersTest, ThePortFollowsTheSelectionAndTheTyping) {
  servers.Add({"a", 1});
  servers.Add({"b", 2});
  servers.cmbConnectServer_Click(1);
  for (const char* text : {"", "x", "7x", "3000000000"}) servers.txtConnectPort_Change(text, 1);
  EXPECT_EQ(Rows() + stage.Taken(), "a 1|b 2|port 2\nno tls");
  servers.chkConnectTls_Click(true, "2", 1);
  servers.chkConnectTls_Click(true, "6667", std::nullopt);
  servers.chkConnectTls_Click(false, "6697", std::nullopt);
  servers.cmbConnectServer_Click(1);
  EXPECT_EQ(stage.Taken(), "port 6697\nport 6667\nport 2\ntls");
  EXPECT_TRUE(servers.IsTls("B", 2) && !servers.IsTls("a", 1) && !servers.IsTls("b", 3));
  servers.txtConnectPort_Change("40000", 1);
  servers.txtConnectPort_Change("5", std::nullopt);
  servers.cmbConnectServer_Click(std::nullopt);
  servers.cmdConnectRemove_Click(std::nullopt);
  EXPECT_EQ(Rows() + stage.Taken(), "a 1|b 40000|");
  servers.cmdConnectRemove_Click(0);
  EXPECT_EQ(Rows() + stage.Taken(), "b 40000|port ");
}

TEST(WhoList, RemovesTheFirstThatIsEqualWithOrWithoutItsMark) {
  WhoList who;
  std::string told;
  who.Nicks().Observe([&told](const ListChange& change) {
    if (change.when == ListChange::When::kAfter) told += std::to_string(change.index) + " ";
  });
  for (int i = 0; i < 600; ++i) who.AddNick("n" + std::to_string(i));
  told.clear();
  for (const char* gone : {"N599", "n256", "n0", "n"}) who.RemoveNick(gone);
  EXPECT_EQ(told + who.Nicks()[255] + " " + std::to_string(who.Nicks().Size()),
            "599 256 0 n257 597");
  for (int i = 0; i < 590; ++i) who.RemoveNick("n" + std::to_string(i));
  EXPECT_EQ(who.Nicks()[0] + who.Nicks()[8] + std::to_string(who.Nicks().Size()), "n590n5989");
  who.Clear();
  told.clear();
  for (const char* nick : {"@Bob", "bob", "+\u00C9va", "xbob", "\u00E9va", "z"}) who.AddNick(nick);
  for (const char* gone : {"", "n598", "\u00E9VA", "BOB", "BOB", "BOB", "va"}) who.RemoveNick(gone);
  EXPECT_EQ(told, "0 1 2 3 4 5 2 0 0 0 0 ");
  EXPECT_EQ(who.Nicks().Items(), std::vector<std::string>{"z"});
}

}  // namespace
}  // namespace brindle
