// The two lists beside the chat: the user's channels and who's here.
#include "irc/channels.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/session_fixture.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

class ChannelsTest : public testing::Test, protected SessionFixture {
 protected:
  void Add(std::optional<std::string> answer) {
    dialogs.inputAnswers.push_back(std::move(answer));
    dialogs.notices.clear();
    channels.lblChannelsAdd_Click();
  }
};

TEST_F(ChannelsTest, AddsRoomsInTheirNormalForm) {
  const FakeDialogs::Shown tooShort{Icon::kCritical,
                                    "Room names must be at least two characters long."};
  const FakeDialogs::Shown known{Icon::kInformation, "That room already exists in the list."};
  const struct {
    std::optional<std::string> answer;
    std::vector<FakeDialogs::Shown> notices;
    std::string added;
  } table[] = {
      {std::nullopt, {}, ""},
      {"", {}, ""},
      {"   ", {}, ""},
      {"#", {tooShort}, ""},
      {" # a ", {tooShort}, ""},
      {"a", {tooShort}, ""},
      {"\u00E9", {tooShort}, ""},
      {"#\u00C9t\u00C9", {}, "#\u00E9t\u00E9"},
      {"ab", {}, "#ab"},
      {"Mail Room", {}, "#mailroom"},
      {"#MailRoom", {known}, ""},
      {"##x", {}, "##x"},
      {"#aa", {}, "#aa"},
  };
  for (const auto& row : table) {
    const size_t before = channels.Rooms().Size();
    const int focused = window.sendBoxFocused;
    Add(row.answer);
    EXPECT_EQ(dialogs.notices, row.notices) << row.answer.value_or("cancel");
    ASSERT_EQ(channels.Rooms().Size(), before + (row.added.empty() ? 0 : 1));
    if (!row.added.empty()) {
      EXPECT_EQ(channels.Rooms().Items().back(), row.added);
    }
    EXPECT_EQ(window.sendBoxFocused, focused + (row.added.empty() ? 0 : 1));
  }
  EXPECT_EQ(dialogs.prompts.at(0), "Enter the channel to be added :");
}

TEST_F(ChannelsTest, EntersARoomUponAddingWhenConnectedAndWanted) {
  Add("#one");
  EXPECT_EQ(socket.TakeSent(), Texts{});
  Register();
  Add("#Two");
  EXPECT_EQ(socket.TakeSent(), Texts{"JOIN #two"});
  options.enterRoomUponAdding = false;
  Add("#three");
  EXPECT_EQ(socket.TakeSent(), Texts{});
}

TEST_F(ChannelsTest, RemovesAndEnters) {
  for (const char* name : {"#one", "#two"}) channels.Rooms().Add(name);
  channels.lblJoin_Click(0);
  EXPECT_EQ(
      dialogs.notices,
      (std::vector{FakeDialogs::Shown{
          Icon::kInformation, "You must first connect to a server before entering a room."}}));
  EXPECT_EQ(window.sendBoxFocused, 0);
  Register();
  channels.lblJoin_Click(1);
  channels.lstChannels_DblClick(0);
  channels.lblJoin_Click(std::nullopt);
  EXPECT_EQ(socket.TakeSent(), (Texts{"JOIN #two", "JOIN #one", "JOIN "}));
  channels.lblChannelsRemove_Click(std::nullopt);
  EXPECT_EQ(channels.Rooms().Size(), 2U);
  channels.lblChannelsRemove_Click(0);
  EXPECT_EQ(channels.Rooms().Items(), Texts{"#two"});
  EXPECT_EQ(window.sendBoxFocused, 5);
}

TEST(WhoList, RemovesTheFirstMatchWithOrWithoutItsMark) {
  const struct {
    Texts before;
    std::string nick;
    Texts after;
  } table[] = {
      {{"@op", "+voice", "plain"}, "OP", {"+voice", "plain"}},
      {{"xp", "p"}, "p", {"p"}},
      {{"a", "A", "@a"}, "a", {"A", "@a"}},
      {{"@@a"}, "a", {"@@a"}},
      {{"a", "b"}, "c", {"a", "b"}},
      {{"a", "@"}, "", {"a", "@"}},
      {{"@\u00C9ve"}, "\u00E9ve", {}},
      {{}, "a", {}},
  };
  for (const auto& row : table) {
    WhoList who;
    for (const std::string& nick : row.before) who.AddNick(nick);
    who.RemoveNick(row.nick);
    EXPECT_EQ(who.Nicks().Items(), row.after) << row.nick;
    EXPECT_EQ(who.Caption(), "Who's here (" + std::to_string(row.after.size()) + ")");
  }
}

TEST(WhoList, TakesNamesFromAReply) {
  const struct {
    const char* reply;
    Texts names;
  } table[] = {
      {":srv 353 me = #room :@op +voice plain", {"@op", "+voice", "plain"}},
      {":srv 353 me = #room :a  b ", {"a", "b"}},
      {":srv 353 me = #room : a", {"a"}},
      {":srv 353 me = #room :", {}},
      {":srv 353 me = #room", {}},
      {":srv 353", {}},
      {"", {}},
  };
  for (const auto& row : table) {
    WhoList who;
    who.AddNames(IrcLine(row.reply), false);
    EXPECT_EQ(who.Nicks().Items(), row.names) << row.reply;
    who.AddNames(IrcLine(row.reply), false);
    EXPECT_EQ(who.Nicks().Size(), 2 * row.names.size());
    who.AddNames(IrcLine(row.reply), true);
    EXPECT_EQ(who.Nicks().Items(), row.names) << row.reply;
  }
}

}  // namespace
}  // namespace brindle
