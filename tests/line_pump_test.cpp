// The display queue and the pump that takes a line a tick to its views and its sound.
#include "irc/line_pump.h"

#include <gtest/gtest.h>

#include <string>

#include "support/stage.h"

namespace brindle {
namespace {

struct PumpStage : Stage {
  struct View : ChatView {
    View(Stage& on, const char* label) : stage(on), name(label) {}
    void Append(const std::vector<ColouredRun>& runs) override {
      for (const ColouredRun& run : runs) {
        stage.Note(name + Readable(run.text));
        length += run.text.size();
      }
    }
    size_t TextLength() const override { return length; }
    Stage& stage;
    std::string name;
    size_t length = 0;
  };
  PumpStage() {
    for (size_t i = 0; i < kSoundSlots; ++i) options.sounds[i].path = std::to_string(i) + ".wav";
    options.sounds[6].on = false;
  }
  std::string Tick() {
    pump.tmrProcess_Timer();
    return Taken();
  }

  Options options;
  Session session;
  OutputQueue queue;
  View status{*this, "status "};
  View room{*this, "room "};
  LinePump pump{{queue, *this}, session, {options, *this}, {status, room}, *this};
};

TEST(LinePump, TakesEachKindToItsViewsAndItsSound) {
  const std::string both = "status |x\nroom |x";
  const std::string journals[] = {both,
                                  "status |x",
                                  "room |x",
                                  "room |x\nplay 3.wav",
                                  "room |x\nplay 2.wav",
                                  "room |x\nplay 4.wav",
                                  "status |x\nplay 5.wav",
                                  both,
                                  "room |x\nplay 0.wav",
                                  "room |x\nplay 1.wav",
                                  ""};
  for (int kind = 0; kind <= 10; ++kind) {
    PumpStage stage;
    stage.pump.SetScanner(
        [&](std::string_view line, Origin) { stage.Note("scan " + Readable(line)); });
    stage.queue.QueueLine("\r\n\002x\037", static_cast<Kind>(kind));
    const std::string journal = stage.Tick();
    EXPECT_TRUE(journal.starts_with("pending 1/1\nscan |^Bx\037")) << journal;
    const size_t shown = journal.find('\n', journal.find("scan"));
    EXPECT_EQ(shown == std::string::npos ? "" : journal.substr(shown + 1), journals[kind]) << kind;
  }
}

TEST(LinePump, KeepsMonitorsAndCaption) {
  PumpStage stage;
  for (int i = 0; i < 3; ++i) stage.queue.QueueLine("\r\nabc", Kind::kRoom);
  EXPECT_EQ(stage.Tick(), "pending 3/3\nroom |abc");
  EXPECT_EQ(stage.Tick(), "pending 2/3\nshown 5/5\nroom |abc");
  stage.queue.SetBusy(true);
  EXPECT_EQ(stage.Tick(), "pending 1/3\nshown 10/10");
  stage.queue.SetBusy(false);
  EXPECT_FALSE(stage.pump.IsIdle());
  EXPECT_EQ(stage.Tick(), "room |abc");
  EXPECT_EQ(stage.Tick(), "pending 0/3\nshown 15/15");
  EXPECT_TRUE(stage.pump.IsIdle());
  // Blanks by themselves are not worth showing.
  stage.queue.QueueLine("   ", Kind::kRoom);
  EXPECT_EQ(stage.Tick(), "pending 1/3");
  stage.session.connectionState = ConnectionState::kRegistered;
  stage.session.currentNick = "me";
  stage.session.connectedSince = stage.ticks;
  EXPECT_EQ(stage.Tick(), "pending 0/3\ncaption Brindle v0.5.85 [NICK : me] [CONNECTED : 0s]");
  stage.ticks += 93'784'999;
  EXPECT_EQ(stage.Tick(), "caption Brindle v0.5.85 [NICK : me] [CONNECTED : 1d:2h:03m:04s]");
  EXPECT_EQ(stage.Tick(), "");
}

TEST(LinePump, CatchesUpWhenManyLinesWaitAndThatIsWanted) {
  PumpStage stage;
  std::string scanned;
  stage.pump.SetScanner([&](std::string_view line, Origin) {
    scanned += line;
    ++stage.ticks;
  });
  const auto shownIn = [&](int ticks) {
    for (int i = 0; i < ticks; ++i) stage.Tick();
    return std::exchange(scanned, "").size();
  };
  const auto wait = [&](size_t lines) {
    while (stage.queue.Pending() < lines) stage.queue.QueueLine("x", Kind::kJoin);
  };
  wait(501);
  EXPECT_EQ(shownIn(1), 1U);
  stage.options.catchUp = true;
  EXPECT_EQ(shownIn(1), 1U);  // 500 are not many
  wait(501);
  stage.pump.tmrProcess_Timer();
  const std::string taken = stage.Taken();
  EXPECT_EQ(Split(taken, "play 0.wav").size(), 2U);  // once
  EXPECT_EQ(shownIn(10), 88U);                       // to the end, a frame's worth at a time
  stage.queue.SetBusy(true);
  EXPECT_EQ(shownIn(1), 0U);
}

TEST(OutputQueue, KeepsTextsOfAnySizeInOrder) {
  OutputQueue queue;
  const size_t sizes[] = {0, 1, 65530, 65531, 65532, 0, 200000, 3};
  std::string printable;
  for (char c = ' '; c <= '~'; ++c) printable += c;
  for (int round = 0; round < 2; ++round) {
    queue.QueueLine(printable, Kind::kPart, Origin::kRoom);
    for (size_t size : sizes) queue.QueueLine(std::string(size, 'x'), Kind::kBoth);
    EXPECT_EQ(queue.Pending(), 9U);
    const OutputQueue::Line first = queue.Take();
    EXPECT_EQ(first.text, printable);
    EXPECT_EQ(first.kind, Kind::kPart);
    EXPECT_EQ(first.origin, Origin::kRoom);
    for (size_t size : sizes) EXPECT_EQ(queue.Take().text.size(), size);
  }
}

}  // namespace
}  // namespace brindle
