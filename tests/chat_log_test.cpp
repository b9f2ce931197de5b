#include "irc/chat_log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "irc/chat_log_find.h"

namespace brindle {
namespace {

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
  ChatLog all;
  const struct {
    Runs runs;
    const char* written;
    size_t length;
  } table[] = {
      {{}, "", 0},
      {{{kBlack, "\r\nhi"}}, "|[k2]hi", 4},
      {{{kBlack, "\r\na\r\n"}, {kBlue, "b"}, {kBlack, "c\r\n\r\n"}}, "|[k1]a|[b1]b[k1]c||", 11},
      {{{kBlack, "a\rb\nc"}, {kBlack, "d"}, {kBlue, ""}, {kBlack, "e"}}, "[k7]a\rb\ncde", 7},
      {{{kBlack, "\u00E4\u20AC\U0001F600"}}, "[k9]\u00E4\u20AC\U0001F600", 3},
  };
  for (const auto& row : table) {
    ChatLog log;
    log.Append(row.runs);
    EXPECT_EQ(Written(log), row.written);
    EXPECT_EQ(log.TextLength(), row.length);
    all.Append(row.runs);
  }
  EXPECT_EQ(Written(all), "|[k2]hi|[k1]a|[b1]b[k1]c||[k16]a\rb\ncde\u00E4\u20AC\U0001F600");
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
  const auto forward = FindDirection::kForward;
  const auto backward = FindDirection::kBackward;
  const struct {
    const char* text;
    LogPosition from;
    FindDirection direction;
    std::optional<LogRange> hit;
  } table[] = {
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
  for (const auto& row : table) {
    EXPECT_EQ(FindInLog(log, row.text, row.from, row.direction), row.hit)
        << row.text << " " << row.from.line;
  }
}

}  // namespace
}  // namespace brindle
