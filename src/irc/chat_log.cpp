#include "irc/chat_log.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {

LogPosition Without(size_t lines, LogPosition position) {
  if (position.line < lines) return {};
  return {position.line - lines, position.byte};
}

LogRange Without(size_t lines, const LogRange& range) {
  return {Without(lines, range.begin), Without(lines, range.end)};
}

void ChatLog::DropOldest(size_t lines) {
  for (size_t i = 0; i < lines; ++i) {
    textLength_ -= CharacterCount(Line(0)) + kCrLf.size();
    lines_.pop_front();
  }
  dropped_ += lines;
  // An empty line has no text.
  const auto kept = std::find_if(lines_.begin(), lines_.end(),
                                 [](const LineRecord& line) { return line.length > 0; });
  text_.DropBefore(kept == lines_.end() ? nullptr : kept->text);
  runs_.DropBefore(kept == lines_.end() ? nullptr : kept->runs);
}

void ChatLog::Append(const std::vector<ColouredRun>& runs) {
  for (const ColouredRun& run : runs) {
    textLength_ += CharacterCount(run.text);
    std::string_view rest = run.text;
    for (size_t end = rest.find(kCrLf); end != std::string_view::npos; end = rest.find(kCrLf)) {
      Continue(run.colour, rest.substr(0, end));
      StartLine();
      rest.remove_prefix(end + kCrLf.size());
    }
    Continue(run.colour, rest);
  }
}

void ChatLog::StartLine() {
  text_.StartSequence();
  runs_.StartSequence();
  lines_.emplace_back();
}

void ChatLog::Continue(Colour colour, std::string_view text) {
  if (text.empty()) return;
  LineRecord& line = lines_.back();
  const auto length = static_cast<std::uint32_t>(text.size());
  line.text = text_.Append(text.data(), text.size());
  line.length += length;
  if (line.runCount > 0 && line.runs[line.runCount - 1].colour == colour) {
    line.runs[line.runCount - 1].length += length;
    return;
  }
  const LogRun run{colour, length};
  line.runs = runs_.Append(&run, 1);
  ++line.runCount;
}

std::pair<size_t, size_t> ChatLog::PartOfLine(size_t line, const LogRange& range) const {
  if (line < range.begin.line || line > range.end.line) return {0, 0};
  const size_t length = lines_[line].length;
  const size_t begin = line == range.begin.line ? std::min(range.begin.byte, length) : 0;
  const size_t end = line == range.end.line ? std::min(range.end.byte, length) : length;
  return {begin, std::max(begin, end)};
}

std::string ChatLog::PlainText(const LogRange& range, std::string_view lineBreak) const {
  const auto forEachPiece = [&](const auto& take) {
    for (size_t line = range.begin.line; line <= range.end.line; ++line) {
      if (line > range.begin.line) take(lineBreak);
      const auto [begin, end] = PartOfLine(line, range);
      take(Line(line).substr(begin, end - begin));
    }
  };
  size_t size = 0;
  forEachPiece([&](std::string_view piece) { size += piece.size(); });
  std::string text;
  text.reserve(size);
  forEachPiece([&](std::string_view piece) { text += piece; });
  return text;
}

std::vector<ColouredRun> ChatLog::Coloured(const LogRange& range) const {
  std::vector<ColouredRun> coloured;
  std::string breaks;
  for (size_t line = range.begin.line; line <= range.end.line; ++line) {
    if (line > range.begin.line) breaks += kCrLf;
    const auto [begin, end] = PartOfLine(line, range);
    size_t runBegin = 0;
    for (const LogRun& run : Runs(line)) {
      const size_t from = std::max(begin, runBegin);
      runBegin += run.length;
      const size_t to = std::min(end, runBegin);
      if (from >= to) continue;
      coloured.push_back({run.colour, breaks + std::string(Line(line).substr(from, to - from))});
      breaks.clear();
    }
  }
  if (!breaks.empty()) coloured.push_back({kBlack, breaks});
  return coloured;
}

}  // namespace brindle
