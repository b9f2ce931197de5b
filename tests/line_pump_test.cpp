#include "irc/line_pump.h"

#include <gtest/gtest.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <string>
#include <utility>
#include <vector>

#include "support/session_fixture.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

class LinePumpTest : public testing::Test, protected SessionFixture {
 protected:
  void Tick(int times = 1) {
    for (int i = 0; i < times; ++i) pump.tmrProcess_Timer();
  }
};

TEST_F(LinePumpTest, SendsEachKindToItsViewsAndSound) {
  for (size_t slot = 0; slot < kSoundSlots; ++slot) {
    options.sounds[slot].path = std::to_string(slot) + ".wav";
  }
  const struct {
    int kind;
    bool status;
    bool room;
    Texts sounds;
  } table[] = {
      {0, true, true, {}},         {1, true, false, {}},        {2, false, true, {}},
      {3, false, true, {"3.wav"}}, {4, false, true, {"2.wav"}}, {5, false, true, {"4.wav"}},
      {6, true, false, {"5.wav"}}, {7, true, true, {"6.wav"}},  {8, false, true, {"0.wav"}},
      {9, false, true, {"1.wav"}}, {10, false, false, {}},      {255, false, false, {}},
  };
  for (const auto& row : table) {
    queue.QueueLine("x", static_cast<Kind>(row.kind));
    Tick();
    EXPECT_EQ(status.TakeText(), row.status ? "x" : "") << row.kind;
    EXPECT_EQ(room.TakeText(), row.room ? "x" : "") << row.kind;
    EXPECT_EQ(std::exchange(sounds.played, {}), row.sounds) << row.kind;
    EXPECT_EQ(queue.Pending(), 0U) << row.kind;
  }
  options.sounds[6].on = false;
  options.sounds[0].path.clear();
  queue.QueueLine("x", Kind::kDisconnected);
  queue.QueueLine("x", Kind::kJoin);
  Tick(2);
  EXPECT_EQ(sounds.played, Texts{});
}

TEST_F(LinePumpTest, ShowsOneLineATickAndMonitorsTheLoad) {
  for (const char* text : {"a", "bc", "\u00E9"}) queue.QueueLine(text, Kind::kRoom);
  Texts seen;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(pump.IsIdle(), i == 4);
    Tick();
    seen.push_back(room.text + " " + window.bufferMonitor + " " + window.rtbMonitor);
  }
  EXPECT_EQ(seen, (Texts{"a 3/3 0/0", "abc 2/3 1/1", "abc\u00E9 1/3 3/3", "abc\u00E9 0/3 5/5",
                         "abc\u00E9 0/3 5/5"}));
  room.text.clear();
  Tick();
  EXPECT_EQ(window.rtbMonitor, "0/5");
}

TEST_F(LinePumpTest, WaitsWhileBusy) {
  pump.SetBusy(true);
  for (const char* text : {"a", "b"}) {
    queue.QueueLine(text, Kind::kStatus);
    Tick(3);
  }
  EXPECT_EQ(window.bufferMonitor, "2/2");
  EXPECT_EQ(status.text, "");
  pump.SetBusy(false);
  Tick(2);
  EXPECT_EQ(status.text, "ab");
}

TEST_F(LinePumpTest, CleansWhatItShows) {
  queue.QueueLine("   ", Kind::kStatus);
  Tick(2);
  EXPECT_EQ(status.text, "");
  EXPECT_EQ(queue.Pending(), 0U);
  queue.QueueLine(" ", Kind::kStatus);
  queue.QueueLine(
      "\x02"
      "bold\x02 and \x1Funder\x1F",
      Kind::kStatus);
  Tick(2);
  EXPECT_EQ(status.TakeText(), " bold and under");
  // Taking the marks out must not join a line break out of its halves.
  queue.QueueLine("\r\nspoof\r\x02\n<op> x\r\x1F\x02\ny", Kind::kStatus);
  Tick();
  EXPECT_EQ(status.text, "\r\nspoof  <op> x  y");
}

TEST_F(LinePumpTest, ShowsTheUptimeWhileRegistered) {
  Tick();
  EXPECT_EQ(window.captionChanges, 0);
  Register();
  EXPECT_EQ(window.caption, "Brindle v0.5.85 [NICK : me]");
  clock.ticks += 3'661'999;
  Tick();
  EXPECT_EQ(window.caption, "Brindle v0.5.85 [NICK : me] [CONNECTED : 1h:01m:01s]");
  const int changes = window.captionChanges;
  Tick(5);
  EXPECT_EQ(window.captionChanges, changes);
  Receive(":me!u@h NICK :you\r\n");
  clock.ticks += 1;
  Tick();
  EXPECT_EQ(window.caption, "Brindle v0.5.85 [NICK : you] [CONNECTED : 1h:01m:02s]");
  connection.wsChat_Error("gone");
  Tick(3);
  EXPECT_EQ(window.caption, "Brindle v0.5.85");
}

TEST(OutputQueue, KeepsTextsOfAnySizeInOrder) {
  OutputQueue queue;
  int woken = 0;
  queue.OnQueued([&woken] { ++woken; });
  Texts in;
  for (size_t size : {0U, 1U, 65530U, 65531U, 65532U, 0U, 200000U, 3U}) {
    in.emplace_back(size, static_cast<char>('a' + in.size()));
  }
  in.emplace_back("\0\r\n", 3);
  for (int round = 0; round < 2; ++round) {
    for (const std::string& text : in) queue.QueueLine(text, Kind::kPart);
    EXPECT_EQ(queue.Pending(), in.size());
    for (const std::string& text : in) EXPECT_TRUE(queue.Take().text == text) << text.size();
  }
  EXPECT_EQ(woken, static_cast<int>(2 * in.size()));
  // Lines may come and go at the same time.
  for (int i = 0; i < 30000; ++i) {
    queue.QueueLine(std::to_string(i), Kind::kJoin);
    if (i % 3 != 0) queue.Take();
  }
  EXPECT_EQ(queue.Take().text, "20000");
}

#if defined(__GLIBC__)
TEST(OutputQueue, ABacklogCostsLittleMoreThanItsText) {
  const std::string text(60, 'x');
  constexpr size_t kLines = 100000;
  const size_t before = mallinfo2().uordblks;
  OutputQueue queue;
  for (size_t i = 0; i < kLines; ++i) queue.QueueLine(text, Kind::kStatus);
  const size_t full = mallinfo2().uordblks;
  if (full == before) GTEST_SKIP() << "this allocator does not count";
  EXPECT_LT(full - before, kLines * text.size() * 5 / 4);
  while (queue.Pending() > 0) queue.Take();
  EXPECT_LT(mallinfo2().uordblks, before + kLines);
}
#endif

}  // namespace
}  // namespace brindle
