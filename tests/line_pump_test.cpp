// What becomes of a line on its way to the views: the queue, the pump, and the log with its search.
#include "irc/line_pump.h"

#include <gtest/gtest.h>

#include "irc/chat_log_find.h"
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
  // Of each kind the views, by their letters, and the sound; the last is none.
  const char* const kinds[] = {"sr", "s", "r", "r3", "r2", "r4", "s5", "sr", "r0", "r1", ""};
  for (int kind = 0; kind <= 10; ++kind) {
    std::string expected;
    for (const char letter : std::string(kinds[kind])) {
      expected += letter == 's'   ? "\nstatus |x"
                  : letter == 'r' ? "\nroom |x"
                                  : std::string("\nplay ") + letter + ".wav";
    }
    PumpStage stage;
    stage.pump.SetScanner(
        [&](std::string_view line, Origin) { stage.Note("scan " + Readable(line)); });
    stage.queue.QueueLine("\r\n\002x\037", static_cast<Kind>(kind));
    const std::string journal = stage.Tick();
    EXPECT_TRUE(journal.starts_with("pending 1/1\nscan |^Bx\037")) << journal;
    EXPECT_EQ(journal.substr(journal.find("x\037") + 2), expected) << kind;
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
  stage.ticks += 93'604'999;
  EXPECT_EQ(stage.Tick(), "caption Brindle v0.5.85 [NICK : me] [CONNECTED : 1d:2h:00m:04s]");
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
  std::string printable;
  for (char c = ' '; c <= '~'; ++c) printable += c;
  for (int round = 0; round < 2; ++round) {
    queue.QueueLine(printable, Kind::kPart, Origin::kRoom);
    const size_t sizes[] = {0, 1, 65530, 65531, 65532, 0, 200000, 3};
    for (size_t size : sizes) queue.QueueLine(std::string(size, 'x'), Kind::kBoth);
    EXPECT_EQ(queue.Pending(), 9U);
    const OutputQueue::Line first = queue.Take();
    EXPECT_EQ(first.text, printable);
    EXPECT_TRUE(first.kind == Kind::kPart && first.origin == Origin::kRoom);
    for (size_t size : sizes) EXPECT_EQ(queue.Take().text.size(), size);
  }
}

constexpr Colour kBlue{0, 0, 255};

using Runs = std::vector<ColouredRun>;

// The log line by line, "|" between them, each run with its colour's letter and its length in
// front.
std::string Written(const ChatLog& log) {
  std::string written;
  for (size_t line = 0; line < log.LineCount(); ++line) {
    if (line > 0) written += '|';
    size_t begin = 0;
    for (const LogRun& run : log.Runs(line)) {
      written += run.colour == kBlue ? "[b" : "[k";
      written.append(std::to_string(run.length)).append("]");
      written += log.Line(line).substr(begin, run.length);
      begin += run.length;
    }
    EXPECT_EQ(begin, log.Line(line).size());
  }
  return written;
}

TEST(ChatLog, CutsLinesAtCrLfAloneAndJoinsRunsOfOneColour) {
  const std::tuple<Runs, const char*, size_t> table[] = {
      {{{kBlack, "\r\na\r\n"}, {kBlue, "b"}, {kBlack, "c\r\n\r\n"}}, "|[k1]a|[b1]b[k1]c||", 11},
      {{{kBlack, "a\rb\nc"}, {kBlack, "d"}, {kBlue, ""}, {kBlack, "e"}}, "[k7]a\rb\ncde", 7},
      {{{kBlack, "\u00E4\u20AC\U0001F600"}}, "[k9]\u00E4\u20AC\U0001F600", 3},
  };
  for (const auto& [runs, written, length] : table) {
    ChatLog log;
    log.Append(runs);
    EXPECT_EQ(Written(log), written);
    EXPECT_EQ(log.TextLength(), length);
  }
}

// Line lengths around and beyond the size of a block, the last line growing piece by piece.
TEST(ChatLog, LinesSurviveBlocksAndGrowth) {
  ChatLog log;
  std::string expected;
  for (size_t i = 0; i < 4000; ++i) {
    const size_t size = i % 500 == 499 ? 70000 : i % 97;
    const std::string tail = std::to_string(i) + std::string(size, static_cast<char>('a' + i % 26));
    log.Append({{kBlack, "\r\n<>"}});
    log.Append({{kBlue, tail}});
    expected += "|[k2]<>[b" + std::to_string(tail.size()) + "]" + tail;
  }
  EXPECT_TRUE(Written(log) == expected);
}

TEST(ChatLog, ExtractsRanges) {
  ChatLog log;
  log.Append({{kBlack, "\r\n<a> "}, {kBlue, "blue\r\n"}, {kBlack, "\r\nlast"}});
  EXPECT_EQ(log.PlainText(log.Everything()), "\n<a> blue\n\nlast");
  EXPECT_EQ(log.PlainText({{1, 2}, {3, 2}}, "|"), "> blue||la");
  EXPECT_EQ(log.PlainText({{1, 2}, {1, 2}}), "");
  EXPECT_EQ(log.Coloured({{1, 2}, {1, 6}}), (Runs{{kBlack, "> "}, {kBlue, "bl"}}));
  log.Append({{kBlue, "\r\n\r\n"}});
  ChatLog copy;
  copy.Append(log.Coloured(log.Everything()));
  EXPECT_EQ(Written(copy), Written(log));
}

TEST(ChatLogFind, FindsInBothDirectionsAndWrapsAround) {
  ChatLog log;
  log.Append({{kBlack, "\r\nCat cat\r\nKELVIN \u0130stanbul \u00C4RGER\r\naaa cA"}});
  // What is looked for from where, forward with "v", and where it is.
  const std::tuple<const char*, LogPosition, char, std::optional<LogPosition>> table[] = {
      {"CAT", {0, 0}, 'v', LogPosition{1, 0}},
      {"cat", {1, 5}, 'v', LogPosition{1, 0}},
      {"cat", {1, 0}, '^', LogPosition{1, 4}},
      {"ca", {1, 0}, '^', LogPosition{3, 4}},
      {"aa", {3, 2}, '^', LogPosition{3, 1}},
      {"\u00E4rger", {0, 0}, 'v', LogPosition{2, 17}},
      {"\u00C4rger", {3, 0}, '^', LogPosition{2, 17}},
      {"cow", {2, 0}, 'v', std::nullopt},
      {"t\r\nK", {0, 0}, 'v', std::nullopt},
      {"", {0, 0}, '^', std::nullopt},
  };
  for (const auto& [text, from, direction, wanted] : table) {
    const auto hit = FindInLog(
        log, text, from, direction == 'v' ? FindDirection::kForward : FindDirection::kBackward);
    ASSERT_EQ(hit.has_value(), wanted.has_value()) << text;
    if (!hit) continue;
    const LogPosition end{wanted->line, wanted->byte + std::string(text).size()};
    EXPECT_EQ(*hit, (LogRange{*wanted, end})) << text << " " << from.line;
  }
}

}  // namespace
}  // namespace brindle
