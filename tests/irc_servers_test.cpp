#include "irc/irc_servers.h"

#include <gtest/gtest.h>

#include "support/fake_dialogs.h"
#include "support/fake_port_box.h"

namespace brindle {
namespace {

class IrcServersTest : public testing::Test {
 protected:
  std::string Rows() const {
    std::string rows;
    for (const IrcServer& row : servers.Entries().Items()) {
      rows += row.host + " " + std::to_string(row.port) + "|";
    }
    return rows;
  }

  FakeDialogs dialogs;
  FakePortBox box;
  IrcServers servers{box, dialogs};
};

TEST_F(IrcServersTest, AddsAnAnswerOrSaysWhatIsWrongWithIt) {
  const std::string noPort = "No port entered. Please try again.";
  const std::string noServer = "No server entered. Please try again.";
  const std::string notNumeric = "The port should be numeric. Please try again.";
  const struct {
    std::optional<std::string> answer;
    std::string added;
    std::string notice;
  } table[] = {
      {std::nullopt, "", noPort},
      {"", "", noPort},
      {"host", "", noPort},
      {":6667", "", noServer},
      {"  :", "", noServer},
      {"host:", "", noPort},
      {"host:  :6667", "", noPort},
      {"host:abc", "", notNumeric},
      {"host:66 67", "", notNumeric},
      {"My.Host:7000", "my.host 7000|", ""},
      {"My.Host:7000", "my.host 7000|", ""},  // again
      {" My Host : 7 ", " my host  7|", ""},
      {"host:1:2:x", "host 1|", ""},
      {"host:70000", "host 70000|", ""},
      {"host:-1", "host -1|", ""},
      {"host:2.5", "host 2|", ""},
      {"host:3000000000", "host 0|", ""},
  };
  std::string rows;
  for (const auto& row : table) {
    dialogs.notices.clear();
    dialogs.inputAnswers = {row.answer};
    servers.cmdConnectAdd_Click();
    EXPECT_EQ(Rows(), rows += row.added);
    const std::vector<FakeDialogs::Shown> notice = {{Icon::kExclamation, row.notice}};
    EXPECT_EQ(dialogs.notices, row.notice.empty() ? decltype(notice){} : notice);
  }
  EXPECT_EQ(dialogs.prompts[0],
            "Enter the server and port. When you are done it should look something like this :\r\r"
            "irc.brindle.example:6667");
  EXPECT_EQ(box.port, "6667");
}

TEST_F(IrcServersTest, ThePortFollowsTheSelectionAndTheTyping) {
  servers.Add({"a", 1});
  servers.Add({"b", 2});
  servers.cmbConnectServer_Click(1);
  EXPECT_EQ(box.port, "2");
  for (const char* text : {"", "x", "7x", "3000000000"}) servers.txtConnectPort_Change(text, 1);
  EXPECT_EQ(Rows(), "a 1|b 2|");
  servers.txtConnectPort_Change("40000", 1);
  servers.txtConnectPort_Change("5", std::nullopt);
  servers.cmbConnectServer_Click(std::nullopt);
  servers.cmdConnectRemove_Click(std::nullopt);
  EXPECT_EQ(Rows() + box.port, "a 1|b 40000|2");
  servers.cmdConnectRemove_Click(0);
  EXPECT_EQ(Rows() + box.port, "b 40000|");
}

}  // namespace
}  // namespace brindle
