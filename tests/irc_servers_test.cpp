#include "irc/irc_servers.h"

#include <gtest/gtest.h>

#include "support/fake_dialogs.h"
#include "support/fake_port_box.h"

namespace brindle {
namespace {

class ServerEntriesTest : public testing::Test {
 protected:
  void Answer(std::optional<std::string> answer) {
    dialogs.inputAnswers = {std::move(answer)};
    entries.cmdConnectAdd_Click();
  }

  const ObservedList<IrcServer>& Rows() const { return entries.Entries(); }

  FakeDialogs dialogs;
  FakePortBox box;
  IrcServers entries{box, dialogs};
};

TEST_F(ServerEntriesTest, SaysWhatIsWrongWithAnAnswer) {
  const std::pair<std::optional<std::string>, const char*> cases[] = {
      {std::nullopt, "No port entered. Please try again."},
      {"", "No port entered. Please try again."},
      {"host", "No port entered. Please try again."},
      {":6667", "No server entered. Please try again."},
      {"  :", "No server entered. Please try again."},
      {"host:", "No port entered. Please try again."},
      {"host:  :6667", "No port entered. Please try again."},
      {"host:abc", "The port should be numeric. Please try again."},
      {"host:66 67", "The port should be numeric. Please try again."},
  };
  for (const auto& [answer, text] : cases) {
    dialogs.notices.clear();
    Answer(answer);
    const std::vector<FakeDialogs::Shown> expected = {{Icon::kExclamation, text}};
    EXPECT_EQ(dialogs.notices, expected) << answer.value_or("(cancelled)");
  }
  EXPECT_EQ(Rows().Size(), 0U);
  EXPECT_EQ(dialogs.prompts[0],
            "Enter the server and port. When you are done it should look something like this :\r\r"
            "irc.brindle.example:6667");
}

TEST_F(ServerEntriesTest, AddsTheFirstTwoParts) {
  const std::tuple<const char*, const char*, int> cases[] = {
      {"My.Host:7000", "my.host", 7000}, {"My.Host:7000", "my.host", 7000},
      {" My Host : 7 ", " my host ", 7}, {"host:1:2:x", "host", 1},
      {"host:70000", "host", 70000},     {"host:-1", "host", -1},
      {"host:2.5", "host", 2},           {"host:3000000000", "host", 0},
  };
  for (const auto& [answer, host, port] : cases) {
    Answer(answer);
    EXPECT_EQ(Rows().Items().back().host, host) << answer;
    EXPECT_EQ(Rows().Items().back().port, port) << answer;
  }
  EXPECT_EQ(Rows().Size(), std::size(cases));
  EXPECT_TRUE(dialogs.notices.empty());
  EXPECT_EQ(box.port, "6667");
}

TEST_F(ServerEntriesTest, PortFollowsTheSelectionAndTheTyping) {
  entries.Add({"a", 1});
  entries.Add({"b", 2});
  entries.cmbConnectServer_Click(1);
  EXPECT_EQ(box.port, "2");
  for (const char* text : {"", "x", "7x", "3000000000"}) entries.txtConnectPort_Change(text, 1);
  EXPECT_EQ(Rows()[1].port, 2);
  entries.txtConnectPort_Change("40000", 1);
  EXPECT_EQ(Rows()[1].port, 40000);
  entries.txtConnectPort_Change("5", std::nullopt);
  entries.cmbConnectServer_Click(std::nullopt);
  EXPECT_EQ(Rows()[0].port, 1);
  EXPECT_EQ(box.port, "2");
}

TEST_F(ServerEntriesTest, RemovingTakesThePortAlong) {
  entries.Add({"a", 1});
  entries.Add({"b", 2});
  entries.cmdConnectRemove_Click(std::nullopt);
  EXPECT_EQ(box.port, "6667");
  entries.cmdConnectRemove_Click(0);
  EXPECT_EQ(Rows().Size(), 1U);
  EXPECT_EQ(Rows()[0].host, "b");
  EXPECT_EQ(box.port, "");
}

}  // namespace
}  // namespace brindle
