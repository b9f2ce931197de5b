#include "mail/manual_request.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/session_fixture.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;
using Notices = std::vector<FakeDialogs::Shown>;

class ManualRequestTest : public testing::Test,
                          protected SessionFixture,
                          protected ManualRequestView {
 protected:
  ManualRequestTest() {
    EnterRoom();
    manual.SetView(this);
  }
  void ReadyForNextNumber() override { ++ready; }
  void RowsChanged() override { ++changes; }

  void Add(std::initializer_list<const char*> numbers) {
    for (const char* number : numbers) manual.cmdAdd_Click("Bot", number);
  }
  std::string Rows() const {
    std::string rows;
    for (const ManualRequest::Row& row : manual.Rows()) {
      rows += row.handle + ":" + row.number + (row.checked ? "* " : " ");
    }
    return rows;
  }

  int ready = 0;
  int changes = 0;
  RequestSender sender{session, connection, queue, options, clock, clock};
  ManualRequest manual{sender, dialogs};
};

TEST_F(ManualRequestTest, AddsRemovesAndClears) {
  manual.cmdAdd_Click(" ", "");
  manual.cmdAdd_Click("Bot", "  ");
  EXPECT_EQ(dialogs.notices,
            (Notices{{Icon::kExclamation,
                      "Please enter the servers handle you would like to request the mail from."},
                     {Icon::kExclamation, "Please enter the mail number you wish to request."}}));
  EXPECT_EQ(ready + changes, 0);
  Add({"1", "x y", "1"});
  EXPECT_EQ(Rows(), "Bot:1 Bot:x y Bot:1 ");
  EXPECT_EQ(ready, 3);
  manual.SetChecked(0, true);
  manual.SetChecked(1, true);
  manual.SetChecked(1, false);
  dialogs.questionAnswers = {false, true};
  manual.cmdRemove_Click();
  EXPECT_EQ(Rows(), "Bot:1* Bot:x y Bot:1 ");
  manual.cmdRemove_Click();
  EXPECT_EQ(Rows(), "Bot:x y Bot:1 ");
  EXPECT_EQ(dialogs.questions[1].text, "Remove all checked items?");
  manual.cmdClear_Click();
  EXPECT_EQ(Rows(), "");
  EXPECT_EQ(changes, 5);
  // Without a window nobody is told.
  manual.SetView(nullptr);
  Add({"2"});
  manual.cmdClear_Click();
  EXPECT_EQ(changes, 5);
  EXPECT_EQ(ready, 3);
}

TEST_F(ManualRequestTest, RequestsEveryPairAndKeepsIt) {
  manual.cmdRequest_Click("sn");
  manual.cmdRequest_Click("  ");
  EXPECT_EQ(dialogs.notices, (Notices{{Icon::kExclamation, "Please enter your AOL screenname."}}));
  EXPECT_EQ(TakeQueued(), Texts{});
  manual.cmdAdd_Click("BotA", "12");
  manual.cmdAdd_Click("!Bot B", " 7x");
  manual.cmdAdd_Click("BotA", "12");
  manual.cmdAdd_Click("a\rQUIT", "1");
  manual.SetChecked(1, true);
  options.timestampChatLines = true;
  std::vector<TickCount> sentAt;
  socket.onSend = [&] { sentAt.push_back(clock.ticks); };
  manual.cmdRequest_Click(" Jane D");
  EXPECT_EQ(
      socket.TakeSent(),
      (Texts{"PRIVMSG #room :!BotA send  Jane D 12", "PRIVMSG #room :!!Bot B send  Jane D  7x",
             "PRIVMSG #room :!BotA send  Jane D 12", "PRIVMSG #room :!a"}));
  const std::string echo = "2|^C15[^C113:07pm^C15] ^C1<me> ";
  EXPECT_EQ(TakeQueued(),
            (Texts{echo + "!BotA send  Jane D 12", echo + "!!Bot B send  Jane D  7x",
                   echo + "!BotA send  Jane D 12", echo + "!a\rQUIT send  Jane D 1"}));
  EXPECT_EQ(Rows(), "BotA:12 !Bot B: 7x* BotA:12 a\rQUIT:1 ");
  ASSERT_EQ(sentAt.size(), 4U);
  for (size_t i = 1; i < sentAt.size(); ++i) EXPECT_GT(sentAt[i] - sentAt[i - 1], 200);
  EXPECT_GT(clock.ticks - sentAt.back(), 200);
}

TEST_F(ManualRequestTest, WhatHappensDuringThePauses) {
  const struct {
    const char* name;
    std::function<void()> meanwhile;
    size_t sentAfter;
  } table[] = {
      {"window closed", [this] { manual.Stop(); }, 0},
      {"error", [this] { connection.wsChat_Error("gone"); }, 0},
      {"kicked", [this] { Receive(":op!u@h KICK #room me :bye\r\n"); }, 0},
      {"other room", [this] { Receive(":me!u@h JOIN #other\r\n"); }, 0},
      // The rows are those of the click.
      {"cleared", [this] { manual.cmdClear_Click(); }, 2},
      {"added",
       [this] {
         Add({"4", "5", "6", "7", "8", "9"});
       },
       2},
      {"pressed again", [this] { manual.cmdRequest_Click("sn"); }, 5},
  };
  for (const auto& row : table) {
    EnterRoom();
    manual.cmdClear_Click();
    Add({"1", "2", "3"});
    size_t before = 0;
    clock.onEvents = [&] {
      clock.onEvents = nullptr;
      before = socket.TakeSent().size();
      row.meanwhile();
    };
    manual.cmdRequest_Click("sn");
    EXPECT_EQ(before, 1U);
    size_t said = 0;
    for (const std::string& line : socket.TakeSent()) said += line.starts_with("PRIVMSG") ? 1 : 0;
    EXPECT_EQ(said, row.sentAfter) << row.name;
  }
}

}  // namespace
}  // namespace brindle
