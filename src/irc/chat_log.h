#pragma once
// The text behind a chat view: coloured lines that only grow at the end and may go from the front,
// kept compactly enough for a million of them. A CR LF starts a new line, so a text that begins
// with one (as displayed texts do) leaves the first line empty; it is kept.

#include <compare>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "irc/block_store.h"
#include "irc/chat_colours.h"

namespace brindle {

// So many bytes of a line in one colour.
struct LogRun {
  Colour colour;
  std::uint32_t length;
  friend bool operator==(const LogRun&, const LogRun&) = default;
};

// A place between two bytes of a line.
struct LogPosition {
  size_t line = 0;
  size_t byte = 0;
  friend auto operator<=>(const LogPosition&, const LogPosition&) = default;
};

// REQUIRES: begin <= end.
struct LogRange {
  LogPosition begin;
  LogPosition end;
  bool IsEmpty() const { return begin == end; }
  friend bool operator==(const LogRange&, const LogRange&) = default;
};

// The same place after the oldest `lines` went; the beginning for one that went with them.
LogPosition Without(size_t lines, LogPosition position);
LogRange Without(size_t lines, const LogRange& range);

class ChatLog {
 public:
  ChatLog() { StartLine(); }

  // Continues the last line; every CR LF starts a new one. A CR LF must lie within one run.
  void Append(const std::vector<ColouredRun>& runs);

  // Forgets the oldest lines; those after them are counted from 0 again. REQUIRES: at least one
  // stays.
  void DropOldest(size_t lines);
  // How many went so far.
  size_t Dropped() const { return dropped_; }

  // Characters (code points) that are there; a line break counts as two.
  size_t TextLength() const { return textLength_; }

  // At least 1: an empty log is one empty line.
  size_t LineCount() const { return lines_.size(); }

  // A line's text without its break, and its colours, which cover the text exactly. Both are valid
  // until the next change. REQUIRES: line < LineCount().
  std::string_view Line(size_t line) const { return {lines_[line].text, lines_[line].length}; }
  std::span<const LogRun> Runs(size_t line) const {
    return {lines_[line].runs, lines_[line].runCount};
  }

  LogRange Everything() const { return {{}, End()}; }
  LogPosition End() const { return {lines_.size() - 1, lines_.back().length}; }

  // The part of a line that lies in `range`, as offsets; empty where there is none.
  std::pair<size_t, size_t> PartOfLine(size_t line, const LogRange& range) const;

  // The text of a range with `lineBreak` between lines.
  std::string PlainText(const LogRange& range, std::string_view lineBreak = "\n") const;

  // The runs that, appended to an empty log, give the lines of the range.
  std::vector<ColouredRun> Coloured(const LogRange& range) const;

 private:
  struct LineRecord {
    const char* text = nullptr;
    LogRun* runs = nullptr;
    std::uint32_t length = 0;
    std::uint32_t runCount = 0;
  };

  void StartLine();
  void Continue(Colour colour, std::string_view text);

  BlockStore<char> text_;
  BlockStore<LogRun> runs_;
  std::deque<LineRecord> lines_;
  size_t textLength_ = 0;
  size_t dropped_ = 0;
};

}  // namespace brindle
