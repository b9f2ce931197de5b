#include "mail/server_commands.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mail/server_handles.h"
#include "support/session_fixture.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;
using Notices = std::vector<FakeDialogs::Shown>;

constexpr char kNoServer[] = "You must first connect to a server before entering a room.";
constexpr char kNoScreenName[] = "You must enter an AOL Screen Name for this to work.";
constexpr char kNoCode[] = "You must enter your accesscode for this to work.";
constexpr char kNoHandle[] = "You must enter a servers handle for this to work.";

class ServerCommandsTest : public testing::Test, protected SessionFixture {
 protected:
  ServerCommands commands{session, connection, queue, options, dialogs, clock};
};

using Click = void (ServerCommands::*)(const CommandFields&);
constexpr Click kRequest = &ServerCommands::mnuCommandsRequest_Click;
constexpr Click kVerify = &ServerCommands::mnuCommandsVerify_Click;
constexpr Click kList = &ServerCommands::mnuCommandsList_Click;
constexpr Click kStatus = &ServerCommands::mnuCommandsStatus_Click;

TEST_F(ServerCommandsTest, SendsAndEchoesEachCommand) {
  EnterRoom();
  const struct {
    Click click;
    CommandFields fields;
    std::string said;
  } table[] = {
      {kRequest, {"Some User", "", "MailBot"}, "!MailBot send Some User accesscode"},
      {kVerify, {"SomeUser", " 12 ", "MailBot"}, "!MailBot verify SomeUser  12 "},
      {kVerify, {"", "code", "MailBot"}, "!MailBot verify  code"},
      {kList, {"SomeUser", "", " !Mail Bot "}, "! !Mail Bot  send SomeUser list"},
      {kStatus, {"SomeUser", "", "MailBot"}, "!MailBot send SomeUser status"},
  };
  for (const auto& row : table) {
    (commands.*row.click)(row.fields);
    EXPECT_EQ(TakeQueued(), Texts{"2|^C1<me> " + row.said});
    EXPECT_EQ(socket.TakeSent(), Texts{"PRIVMSG #room :" + row.said});
  }
  options.timestampChatLines = true;
  commands.mnuCommandsList_Click({"SomeUser", "", "bot\r\nQUIT"});
  EXPECT_EQ(TakeQueued(), Texts{"2|^C15[^C113:07pm^C15] ^C1<me> !bot|QUIT send SomeUser list"});
  EXPECT_EQ(socket.TakeSent(), Texts{"PRIVMSG #room :!bot"});
}

TEST_F(ServerCommandsTest, RefusesInOrder) {
  const struct {
    bool connected;
    Click click;
    CommandFields fields;
    const char* refusal;
  } table[] = {
      {false, kRequest, {"", "", ""}, kNoServer},
      {false, kVerify, {"", "", ""}, kNoServer},
      {false, kList, {"sn", "", "bot"}, kNoServer},
      {true, kRequest, {" ", "c", ""}, kNoScreenName},
      {true, kVerify, {"sn", " ", ""}, kNoCode},
      {true, kList, {"", "c", "bot"}, kNoScreenName},
      {true, kStatus, {"", "c", "bot"}, kNoScreenName},
      {true, kVerify, {"", "c", "  "}, kNoHandle},
      {true, kStatus, {"sn", "", ""}, kNoHandle},
  };
  for (const auto& row : table) {
    // Connecting is enough.
    session.connectionState =
        row.connected ? ConnectionState::kConnecting : ConnectionState::kDisconnected;
    socket.open = true;
    dialogs.notices.clear();
    (commands.*row.click)(row.fields);
    EXPECT_EQ(dialogs.notices, (Notices{{Icon::kInformation, row.refusal}}));
    EXPECT_EQ(TakeQueued(), Texts{});
    EXPECT_EQ(socket.sent, Texts{});
  }
}

TEST(ServerHandles, AddsWhatTheUserTyped) {
  FakeDialogs dialogs;
  ServerHandles handles(dialogs);
  const struct {
    const char* typed;
    bool refused;
    Texts items;
  } table[] = {
      {"", false, {}},
      {"  ", false, {}},
      {" Mail Bot", false, {" Mail Bot"}},
      {"mailbot ", true, {" Mail Bot"}},
      {"!MailBot", false, {" Mail Bot", "MailBot"}},
      {"!!x", false, {" Mail Bot", "MailBot", "!x"}},
      {"!X", true, {" Mail Bot", "MailBot", "!x"}},
  };
  for (const auto& row : table) {
    dialogs.notices.clear();
    handles.cmdInfoAdd_Click(row.typed);
    EXPECT_EQ(handles.Items().Items(), row.items) << row.typed;
    EXPECT_EQ(dialogs.notices,
              row.refused
                  ? (Notices{{Icon::kInformation, "That server already exists in the list."}})
                  : Notices{});
  }
  handles.cmdInfoRemove_Click(std::nullopt);
  handles.cmdInfoRemove_Click(1);
  EXPECT_EQ(handles.Items().Items(), (Texts{" Mail Bot", "!x"}));
}

TEST(ServerHandles, FindsAndAddsTheNormalForm) {
  FakeDialogs dialogs;
  ServerHandles handles(dialogs);
  std::string handle = " \x02!Mail\x1F \u00C9Bot!";
  EXPECT_TRUE(handles.ServerHandleMissing(handle));
  EXPECT_EQ(handle, "mail\u00E9bot");
  handle = "MAIL \u00C9BOT";
  handles.AddServerHandle(handle);
  EXPECT_EQ(handle, "mail\u00E9bot");
  EXPECT_FALSE(handles.ServerHandleMissing(handle));
  handles.cmdInfoAdd_Click("Typed");
  handle = "typed";
  EXPECT_TRUE(handles.ServerHandleMissing(handle));
}

}  // namespace
}  // namespace brindle
