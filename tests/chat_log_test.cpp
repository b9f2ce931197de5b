#include "irc/chat_log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "irc/chat_log_find.h"

namespace brindle {
namespace {

constexpr Colour kBlue{0, 0, 255};

using Runs = std::vector<ColouredRun>;

std::vector<std::string> Lines(const ChatLog& log) {
  std::vector<std::string> lines;
  for (size_t i = 0; i < log.LineCount(); ++i) lines.emplace_back(log.Line(i));
  return lines;
}

TEST(ChatLogTest, CutsLinesAtCrLfAlone) {
  struct Case {
    Runs runs;
    std::vector<std::string> lines;
    size_t length;
  };
  const std::vector<Case> cases = {
      {{}, {""}, 0},
      {{{kBlack, "\r\nhi"}}, {"", "hi"}, 4},
      {{{kBlack, "\r\na\r\n"}, {kBlue, "b"}, {kBlack, "c\r\n\r\n"}}, {"", "a", "bc", "", ""}, 11},
      {{{kBlack, "a\rb\nc"}}, {"a\rb\nc"}, 5},
      {{{kBlack, "\u00E4\u20AC\U0001F600"}}, {"\u00E4\u20AC\U0001F600"}, 3},
  };
  for (const Case& c : cases) {
    ChatLog log;
    log.Append(c.runs);
    EXPECT_EQ(Lines(log), c.lines);
    EXPECT_EQ(log.TextLength(), c.length);
  }
}

TEST(ChatLogTest, RunsCoverTheLineAndJoinWhereTheColourStays) {
  ChatLog log;
  log.Append({{kBlack, "\r\none"}, {kBlack, "two"}, {kBlue, "x"}});
  log.Append({{kBlue, "y\r\nz"}});
  ASSERT_EQ(log.LineCount(), 3U);
  const auto runs = log.Runs(1);
  EXPECT_EQ(std::vector<LogRun>(runs.begin(), runs.end()),
            (std::vector<LogRun>{{kBlack, 6}, {kBlue, 2}}));
  EXPECT_EQ(log.Runs(0).size(), 0U);
  EXPECT_EQ(log.Runs(2)[0], (LogRun{kBlue, 1}));
}

// Line lengths around and beyond the size of a block, the last line growing piece by piece.
TEST(ChatLogTest, LinesSurviveBlocksAndGrowth) {
  ChatLog log;
  std::vector<std::string> expected = {""};
  size_t length = 0;
  for (size_t i = 0; i < 4000; ++i) {
    const size_t size = i % 500 == 499 ? 70000 : i % 97;
    expected.push_back(std::to_string(i) + std::string(size, static_cast<char>('a' + i % 26)));
    const std::string& line = expected.back();
    log.Append({{kBlack, "\r\n" + line.substr(0, 2)}});
    log.Append({{kBlue, line.substr(std::min<size_t>(2, line.size()))}});
    length += 2 + line.size();
  }
  EXPECT_EQ(Lines(log), expected);
  EXPECT_EQ(log.TextLength(), length);
  for (size_t i = 0; i < log.LineCount(); ++i) {
    size_t covered = 0;
    for (const LogRun& run : log.Runs(i)) covered += run.length;
    ASSERT_EQ(covered, expected[i].size()) << i;
  }
}

TEST(ChatLogTest, ExtractsRanges) {
  ChatLog log;
  log.Append({{kBlack, "\r\n<a> "}, {kBlue, "blue\r\n"}, {kBlack, "\r\nlast"}});
  EXPECT_EQ(log.PlainText(log.Everything()), "\n<a> blue\n\nlast");
  EXPECT_EQ(log.PlainText({{1, 2}, {3, 2}}, "|"), "> blue||la");
  EXPECT_EQ(log.PlainText({{1, 2}, {1, 2}}), "");
  EXPECT_EQ(log.Coloured({{1, 2}, {1, 6}}), (Runs{{kBlack, "> "}, {kBlue, "bl"}}));

  ChatLog copy;
  log.Append({{kBlue, "\r\n\r\n"}});
  copy.Append(log.Coloured(log.Everything()));
  EXPECT_EQ(Lines(copy), Lines(log));
  EXPECT_EQ(copy.Coloured(copy.Everything()), log.Coloured(log.Everything()));
}

TEST(ChatLogFindTest, FindsInBothDirectionsAndWrapsAround) {
  ChatLog log;
  log.Append({{kBlack, "\r\nCat cat\r\nKELVIN \u0130stanbul \u00C4RGER\r\naaa cA"}});
  const auto forward = FindDirection::kForward;
  const auto backward = FindDirection::kBackward;
  struct Case {
    const char* text;
    LogPosition from;
    FindDirection direction;
    std::optional<LogRange> hit;
  };
  const std::vector<Case> cases = {
      {"CAT", {0, 0}, forward, LogRange{{1, 0}, {1, 3}}},
      {"cat", {1, 1}, forward, LogRange{{1, 4}, {1, 7}}},
      {"cat", {1, 5}, forward, LogRange{{1, 0}, {1, 3}}},
      {"cat", {1, 4}, backward, LogRange{{1, 0}, {1, 3}}},
      {"cat", {1, 0}, backward, LogRange{{1, 4}, {1, 7}}},
      {"ca", {3, 7}, forward, LogRange{{1, 0}, {1, 2}}},
      {"ca", {1, 0}, backward, LogRange{{3, 4}, {3, 6}}},
      {"aa", {3, 2}, backward, LogRange{{3, 1}, {3, 3}}},
      {"a", {3, 6}, backward, LogRange{{3, 5}, {3, 6}}},
      {"\u00E4rger", {0, 0}, forward, LogRange{{2, 17}, {2, 23}}},
      {"\u00E4rger", {2, 8}, forward, LogRange{{2, 17}, {2, 23}}},
      {"\u00C4RGER", {3, 0}, backward, LogRange{{2, 17}, {2, 23}}},
      {"\u00E4", {2, 17}, backward, LogRange{{2, 17}, {2, 19}}},
      {"cow", {2, 0}, forward, std::nullopt},
      {"t\r\nK", {0, 0}, forward, std::nullopt},
      {"", {0, 0}, backward, std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FindInLog(log, c.text, c.from, c.direction), c.hit) << c.text << " " << c.from.line;
  }
}

}  // namespace
}  // namespace brindle
