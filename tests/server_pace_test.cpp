// The pace of long runs of requests, against servers as they have been measured.
#include "irc/server_pace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <deque>

#include "support/talk_stage.h"

namespace brindle {
namespace {

// A server that takes `burst` commands at once and then one in `interval`; an answer travels `way`
// milliseconds in each direction. Commands that wait too long a queue end the session.
struct SimulatedServer {
  double burst;
  double interval;
  TickCount way;

  struct Command {
    TickCount arrives;
    std::string line;
  };
  std::deque<Command> waiting = {};
  std::deque<Command> answers = {};
  double credit = burst;
  TickCount last = 0;
  size_t longestQueue = 0;
  int requests = 0;
  TickCount worstTyped = 0;

  void Turn(TickCount now, ChatStage& stage) {
    credit = std::min(burst, credit + static_cast<double>(now - last) / interval);
    last = now;
    while (!waiting.empty() && waiting.front().arrives <= now && credit >= 1) {
      const Command command = waiting.front();
      waiting.pop_front();
      credit -= 1;
      if (command.line.starts_with("PING :")) {
        answers.push_back({now + way, ":srv PONG srv " + command.line.substr(5)});
      } else if (command.line.ends_with("typed")) {
        worstTyped = std::max(worstTyped, now - command.arrives + way);
      } else {
        ++requests;
      }
    }
    longestQueue = std::max(longestQueue, waiting.size());
    while (!answers.empty() && answers.front().arrives <= now) {
      const std::string line = answers.front().line;
      answers.pop_front();
      stage.Receive(line);
    }
  }
};

// A stage in whose list every other row is checked, and asked for.
void AskFor(size_t mails, TalkStage& stage) {
  std::string checks;
  while (checks.size() < 2 * mails) checks += "x.";
  stage.EnterRoom();
  stage.Fill(checks);
  stage.Click();
}

TEST(ServerPace, FollowsTheServerAndLeavesRoomForTheUser) {
  const struct {
    const char* name;
    SimulatedServer server;
    TickCount slowest;     // for 300 requests, in milliseconds
    TickCount worstTyped;  // from the key to the room
  } table[] = {
      {"one a second, near", {10, 1000, 0}, 490'000, 2010},
      {"one a second, far", {10, 1000, 150}, 490'000, 2610},
      {"keeps up, near", {1000, 1, 0}, 66'000, 20},
      {"keeps up, far", {1000, 1, 150}, 75'000, 170},
      {"three a second", {10, 333, 0}, 490'000, 1110},
      {"burst of twenty", {20, 1000, 0}, 490'000, 3010},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(row.name);
    TalkStage stage;
    SimulatedServer server = row.server;
    const TickCount start = server.last = stage.ticks;
    AskFor(300, stage);
    for (TickCount now = 0; !stage.stack.IsIdle() && now < row.slowest; now += 10) {
      // The user types now and then, also while the pace is being found.
      if (now % 2900 < 10 && now > 0) stage.outgoing.cmdSend_Click("typed", 1);
      stage.Wait(10);
      const std::string taken = stage.Taken();
      for (const std::string_view words : Split(taken, "\n")) {
        if (!words.starts_with("> ")) continue;
        server.waiting.push_back({stage.ticks + row.server.way, std::string(words.substr(2))});
      }
      server.Turn(stage.ticks, stage);
    }
    EXPECT_LT(stage.ticks - start, row.slowest);
    for (int i = 0; i < 3000; ++i) server.Turn(stage.ticks += 10, stage);
    EXPECT_EQ(server.requests, 300);
    EXPECT_LE(server.worstTyped, row.worstTyped);
    EXPECT_LE(server.longestQueue, 12U);
  }
}

TEST(ServerPace, ShortRunsLookAsTheyAlwaysDid) {
  TalkStage stage;
  AskFor(20, stage);
  stage.Wait(10'000);
  EXPECT_EQ(stage.sentAt.size(), 20U);
  EXPECT_EQ(Split(stage.Taken(), "PING").size(), 1U);
}

TEST(ServerPace, WaitsForAServerThatIsSilentAndSaysSo) {
  TalkStage stage;
  AskFor(50, stage);
  stage.Wait(59'000);
  EXPECT_LE(stage.sentAt.size(), 8U);
  stage.Taken();
  stage.Wait(2'000);
  EXPECT_EQ(stage.Taken(),
            "hint The server has not answered for a minute; the requests wait for it.");
  // What it has not confirmed is checked again when it goes.
  stage.Receive(":srv PONG srv :brindle1");
  stage.connection.wsChat_Error("gone");
  stage.Wait(10);
  EXPECT_EQ(stage.list.CheckedCount(), 49U);
}

}  // namespace
}  // namespace brindle
