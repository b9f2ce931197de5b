#include "ui/chat_selection.h"

#include <QTextBoundaryFinder>
#include <algorithm>

#include "base/utf8.h"
#include "ui/qt_text.h"
#include "ui/utf16_offsets.h"

namespace brindle {
namespace {

// No word is looked for further away than this, however long the line.
constexpr size_t kWordReach = 1024;

}  // namespace

void ChatSelection::Start(LogPosition position, SelectionUnit unit) {
  unit_ = unit;
  anchor_ = UnitAt(position);
  range_ = anchor_;
  caret_ = unit == SelectionUnit::kCharacter ? position : anchor_.end;
}

void ChatSelection::ExtendTo(LogPosition position) {
  const LogRange there = UnitAt(position);
  range_ = {std::min(anchor_.begin, there.begin), std::max(anchor_.end, there.end)};
  caret_ = position;
}

void ChatSelection::Set(const LogRange& range) {
  unit_ = SelectionUnit::kCharacter;
  anchor_ = {range.begin, range.begin};
  range_ = range;
  caret_ = range.end;
}

void ChatSelection::Shift(size_t lines) {
  anchor_ = Without(lines, anchor_);
  range_ = Without(lines, range_);
  caret_ = Without(lines, caret_);
}

LogRange ChatSelection::UnitAt(LogPosition position) const {
  switch (unit_) {
    case SelectionUnit::kWord:
      return WordAt(position);
    case SelectionUnit::kLine:
      return {{position.line, 0}, {position.line, log_.Line(position.line).size()}};
    case SelectionUnit::kCharacter:
      break;
  }
  return {position, position};
}

LogRange ChatSelection::WordAt(LogPosition position) const {
  const std::string_view line = log_.Line(position.line);
  const size_t from = CharacterBegin(line, position.byte - std::min(position.byte, kWordReach));
  const size_t to = CharacterBegin(line, position.byte + kWordReach);
  const std::string_view near = line.substr(from, to - from);
  const QString text = ToQString(near);
  const auto at = static_cast<qsizetype>(UnitsIn(near.substr(0, position.byte - from)));

  QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
  finder.setPosition(at);
  const qsizetype begin =
      finder.isAtBoundary() && at < text.size() ? at : finder.toPreviousBoundary();
  if (begin < 0) return {position, position};
  finder.setPosition(begin);
  const qsizetype end = finder.toNextBoundary();
  const auto byteOf = [&](qsizetype unit) {
    return from + ByteOfUnit(near, static_cast<size_t>(unit));
  };
  return {{position.line, byteOf(begin)}, {position.line, byteOf(end < 0 ? text.size() : end)}};
}

}  // namespace brindle
