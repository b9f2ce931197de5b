#include "mail/requests.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "support/session_fixture.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

class RequestsTest : public testing::Test, protected SessionFixture {
 protected:
  RequestsTest() { EnterRoom(); }

  // One row a character, numbered from 1; "x" is checked.
  void Fill(const std::string& checks) {
    list.Clear();
    for (size_t row = 0; row < checks.size(); ++row) {
      list.Append(std::to_string(row + 1), "Title");
      list.SetChecked(row, checks[row] == 'x');
    }
    ForgetRecords();
  }

  std::string Checks() const {
    std::string checks;
    for (size_t row = 0; row < list.Size(); ++row) checks += list.IsChecked(row) ? 'x' : '.';
    return checks;
  }

  void Click() { requests.cmdRequest_Click("My Name", "Bot"); }

  // What was asked for since Fill.
  Texts Asked() {
    Texts asked;
    for (const std::string& line : socket.TakeSent()) {
      const std::string start = "PRIVMSG #room :!Bot send My Name ";
      asked.push_back(line.starts_with(start) ? line.substr(start.size()) : line);
    }
    return asked;
  }

  // Does `action` once, in the first pause.
  void InFirstPause(std::function<void()> action) {
    clock.onEvents = [this, action = std::move(action)] {
      clock.onEvents = nullptr;
      action();
    };
  }

  MailList list;
  RequestSender sender{session, connection, queue, options, clock, clock};
  Requests requests{list, sender, options, window, dialogs};
};

TEST_F(RequestsTest, AsksForRunsOfCheckedRows) {
  const struct {
    const char* checks;
    Texts asked;
    const char* left;
  } table[] = {
      {"", {}, ""},
      {"....", {}, "...."},
      {"xxx.x.", {"1-3", "5"}, "......"},
      {".x..", {"2"}, "...."},
      {"..xx", {"3-4"}, "...."},
      {"x..x", {"1"}, "...."},  // a last row on its own is never asked for
      {"x", {}, "."},
      {"xx", {"1-2"}, ".."},
      {"x.xx.xxx.x", {"1", "3-4", "6-8"}, ".........."},
  };
  for (const auto& row : table) {
    for (const bool deselect : {true, false}) {
      options.deselectAfterRequested = deselect;
      Fill(row.checks);
      Click();
      EXPECT_EQ(Asked(), row.asked) << row.checks;
      EXPECT_EQ(Checks(), deselect ? row.left : row.checks);
    }
  }
}

TEST_F(RequestsTest, EchoesThenSendsThenPauses) {
  Fill("x.x.x.");
  options.timestampChatLines = true;
  std::vector<TickCount> sentAt;
  socket.onSend = [&] {
    sentAt.push_back(clock.ticks);
    // The room has been told already when the line goes out.
    EXPECT_EQ(queue.Pending(), sentAt.size());
  };
  Click();
  socket.onSend = nullptr;
  EXPECT_EQ(TakeQueued(), (Texts{"2|^C15[^C113:07pm^C15] ^C1<me> !Bot send My Name 1",
                                 "2|^C15[^C113:07pm^C15] ^C1<me> !Bot send My Name 3",
                                 "2|^C15[^C113:07pm^C15] ^C1<me> !Bot send My Name 5"}));
  ASSERT_EQ(sentAt.size(), 3U);
  EXPECT_GT(sentAt[1] - sentAt[0], 200);
  EXPECT_GT(sentAt[2] - sentAt[1], 200);
  EXPECT_GT(clock.ticks - sentAt[2], 200);
  EXPECT_EQ(window.hint, "Requests sent: 3");

  Fill("x.");
  requests.cmdRequest_Click(" a\rQUIT", "h");
  EXPECT_EQ(Asked(), Texts{"PRIVMSG #room :!h send  a"});
}

TEST_F(RequestsTest, RefusesWithoutNameHandleRoomOrConnection) {
  const char* const noName = "You must enter an AOL Screen Name for this to work.";
  const char* const noHandle = "You must enter a servers handle for this to work.";
  const struct {
    ConnectionState state;
    const char* room;
    const char* name;
    const char* handle;
    const char* notice;
  } table[] = {
      {ConnectionState::kDisconnected, "#room", "", "", nullptr},
      {ConnectionState::kRegistered, "#room", " ", "", noName},
      {ConnectionState::kRegistered, "", "sn", "  ", noHandle},
      {ConnectionState::kRegistered, "", "sn", "bot", nullptr},
  };
  Fill("x.");
  for (const auto& row : table) {
    session.connectionState = row.state;
    session.currentRoom = row.room;
    dialogs.notices.clear();
    requests.cmdRequest_Click(row.name, row.handle);
    std::vector<FakeDialogs::Shown> expected;
    if (row.notice) expected.push_back({Icon::kInformation, row.notice});
    EXPECT_EQ(dialogs.notices, expected);
    EXPECT_EQ(Asked(), Texts{});
    EXPECT_EQ(TakeQueued(), Texts{});
    EXPECT_EQ(Checks(), "x.");
  }
}

TEST_F(RequestsTest, EndsWhenThereIsNobodyLeftToAskOrNothingToAskFor) {
  const struct {
    const char* name;
    std::function<void()> meanwhile;
    const char* left;
  } table[] = {
      {"error", [this] { connection.wsChat_Error("gone"); }, "..x.x."},
      {"closing", [this] { Receive("ERROR :Closing Link: x\r\n"); }, "..x.x."},
      {"kicked", [this] { Receive(":op!u@h KICK #room me :bye\r\n"); }, "..x.x."},
      {"kicked, no comment", [this] { Receive(":op!u@h KICK #room :me\r\n"); }, "..x.x."},
      {"parted", [this] { Receive(":me!u@h PART :#room\r\n"); }, "..x.x."},
      {"other room", [this] { Receive(":me!u@h JOIN #other\r\n"); }, "..x.x."},
      {"cleared", [this] { list.Clear(); }, ""},
      {"replaced",
       [this] {
         MailList other;
         for (const char* number : {"1", "2", "3", "4"}) other.Append(number, "new");
         other.CheckAll();
         list.Replace(other);
       },
       "xxxx"},
  };
  for (const auto& row : table) {
    EnterRoom();
    Fill("x.x.x.");
    InFirstPause([&] {
      EXPECT_EQ(Asked(), Texts{"1"});
      row.meanwhile();
      socket.TakeSent();
    });
    Click();
    EXPECT_EQ(Asked(), Texts{}) << row.name;
    EXPECT_EQ(Checks(), row.left) << row.name;
  }
  EnterRoom();
  Fill("x.x.");
  InFirstPause([this] { requests.Stop(); });
  Click();
  EXPECT_EQ(Asked(), Texts{"1"});
}

TEST_F(RequestsTest, ASecondClickRunsInTheMiddleOfTheFirst) {
  options.deselectAfterRequested = false;
  Fill("x.x.");
  InFirstPause([this] { Click(); });
  Click();
  EXPECT_EQ(Asked(), (Texts{"1", "1", "3", "3"}));
  options.deselectAfterRequested = true;
  Fill("x.xx.");
  InFirstPause([this] { Click(); });
  Click();
  EXPECT_EQ(Asked(), (Texts{"1", "3-4"}));
  EXPECT_EQ(Checks(), ".....");
  // Rows checked meanwhile are found, too.
  Fill("x....");
  InFirstPause([this] { list.CheckRange(1, 3); });
  Click();
  EXPECT_EQ(Asked(), (Texts{"1", "2-4"}));
}

}  // namespace
}  // namespace brindle
