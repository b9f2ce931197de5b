#include "irc/arrival_cutter.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

class ArrivalCutterTest : public testing::Test {
 protected:
  Texts Receive(std::string_view bytes) {
    cutter.Receive(bytes, now, deliver);
    return std::exchange(delivered, {});
  }
  Texts Wait(int milliseconds) {
    now += milliseconds;
    cutter.Tick(now, deliver);
    return std::exchange(delivered, {});
  }

  ArrivalCutter cutter;
  TickCount now = 5000;
  Texts delivered;
  ArrivalCutter::Deliver deliver = [this](std::string_view arrival) {
    delivered.emplace_back(arrival);
  };
};

TEST_F(ArrivalCutterTest, DeliversEachWholeLineByItself) {
  EXPECT_EQ(Receive("one\r\ntwo\r\nth"), (Texts{"one\r\n", "two\r\n"}));
  EXPECT_EQ(Receive("ree\r"), Texts{});
  EXPECT_EQ(Receive(""), Texts{});
  EXPECT_EQ(Receive("\n\r\n"), (Texts{"three\r\n", "\r\n"}));
  EXPECT_EQ(Receive("lone\rand\nstay\n\r\n"), Texts{"lone\rand\nstay\n\r\n"});
  EXPECT_EQ(cutter.TailDue(), std::nullopt);
}

TEST_F(ArrivalCutterTest, DoesNotCareHowTheLinesWereCut) {
  std::mt19937 random(5);
  for (int round = 0; round < 300; ++round) {
    std::string bytes;
    for (size_t left = random() % 80; left > 0; --left) bytes += "\r\n\nab"[random() % 5];
    Texts expected;
    const auto lines = Split(bytes, kCrLf);
    for (size_t i = 0; i + 1 < lines.size(); ++i)
      expected.push_back(std::string(lines[i]) + "\r\n");
    cutter.Reset();
    Texts got;
    for (size_t at = 0; at < bytes.size();) {
      const size_t size = 1 + random() % 4;
      for (std::string& text : Receive(std::string_view(bytes).substr(at, size))) {
        got.push_back(std::move(text));
      }
      at += size;
    }
    EXPECT_EQ(got, expected) << testing::PrintToString(bytes);
  }
}

TEST_F(ArrivalCutterTest, LosesBothHalvesOfALineCutByALongPause) {
  EXPECT_EQ(Receive("PING :fi"), Texts{});
  EXPECT_EQ(cutter.TailDue(), now + 50);
  EXPECT_EQ(Wait(49), Texts{});
  EXPECT_EQ(Receive("rs"), Texts{});
  EXPECT_EQ(Wait(49), Texts{});
  EXPECT_EQ(Wait(1), Texts{"PING :firs"});
  EXPECT_EQ(Wait(1000), Texts{});
  EXPECT_EQ(Receive("t\r"), Texts{});
  EXPECT_EQ(Wait(1000), Texts{});
  EXPECT_EQ(Receive(""), Texts{});
  EXPECT_EQ(Receive("\nsecond\r\n"), Texts{"second\r\n"});

  // The tail itself may end in the first half of the line end.
  EXPECT_EQ(Receive("x\r"), Texts{});
  EXPECT_EQ(Wait(50), Texts{"x\r"});
  EXPECT_EQ(Receive("\nthird\r\n"), Texts{"third\r\n"});
  EXPECT_EQ(Receive("x\r"), Texts{});
  EXPECT_EQ(Wait(50), Texts{"x\r"});
  EXPECT_EQ(Receive("y\nz\r\nfourth\r\n"), Texts{"fourth\r\n"});
}

TEST_F(ArrivalCutterTest, BoundsWhatWaitsForALineEnd) {
  const std::string longest(ArrivalCutter::kLongestTail, 'x');
  EXPECT_EQ(Receive(longest), Texts{});
  EXPECT_EQ(Receive("y"), Texts{longest + "y"});
  for (int i = 0; i < 100; ++i) EXPECT_EQ(Receive(longest), Texts{});
  EXPECT_EQ(cutter.TailDue(), std::nullopt);
  EXPECT_EQ(Receive("\r\nok\r\n"), Texts{"ok\r\n"});
  EXPECT_EQ(Receive(longest + longest + "\r\n"), Texts{longest + longest + "\r\n"});
}

TEST_F(ArrivalCutterTest, ForgetsEverythingWithTheConnection) {
  Receive("old");
  cutter.Reset();
  EXPECT_EQ(Receive("new\r\n"), Texts{"new\r\n"});
  Receive("old");
  Wait(50);
  cutter.Reset();
  EXPECT_EQ(Receive("new\r\n"), Texts{"new\r\n"});

  // What a line causes may end the connection: nothing of the rest is delivered.
  int lines = 0;
  const auto reset = [&](std::string_view) {
    ++lines;
    cutter.Reset();
  };
  cutter.Receive("one\r\ntwo\r\nthr", now, reset);
  EXPECT_EQ(lines, 1);
  EXPECT_EQ(Receive("ee\r\n"), Texts{"ee\r\n"});
}

}  // namespace
}  // namespace brindle
