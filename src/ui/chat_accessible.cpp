#include "ui/chat_accessible.h"

#include <QTextBoundaryFinder>
#include <algorithm>

#include "ui/chat_text_view.h"
#include "ui/qt_text.h"
#include "ui/utf16_offsets.h"

namespace brindle {
namespace {

constexpr size_t kLinesPerStart = 256;

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
  auto* view = qobject_cast<ChatTextView*>(object);
  return view == nullptr ? nullptr : new ChatAccessible(view);
}

QTextBoundaryFinder::BoundaryType FinderType(QAccessible::TextBoundaryType type) {
  switch (type) {
    case QAccessible::CharBoundary:
      return QTextBoundaryFinder::Grapheme;
    case QAccessible::WordBoundary:
      return QTextBoundaryFinder::Word;
    default:
      return QTextBoundaryFinder::Sentence;
  }
}

}  // namespace

void InstallChatAccessibility() {
  static const bool kInstalled = [] {
    QAccessible::installFactory(MakeAccessible);
    return true;
  }();
  static_cast<void>(kInstalled);
}

void NotifyAppended(ChatTextView& view, LogPosition from) {
  auto* accessible = dynamic_cast<ChatAccessible*>(QAccessible::queryAccessibleInterface(&view));
  if (accessible == nullptr) return;
  const int start = accessible->OffsetOf(from);
  const QString text = accessible->text(start, accessible->characterCount());
  QAccessibleTextInsertEvent event(&view, start, text);
  QAccessible::updateAccessibility(&event);
}

void NotifyRemoved(ChatTextView& view, const QString& text) {
  if (QAccessible::queryAccessibleInterface(&view) == nullptr) return;
  QAccessibleTextRemoveEvent event(&view, 0, text);
  QAccessible::updateAccessibility(&event);
}

void ChatOffsets::CatchUp() {
  if (dropped_ != log_.Dropped()) starts_.clear();
  dropped_ = log_.Dropped();
  if (starts_.empty()) starts_.push_back(0);
  for (size_t line = starts_.size() * kLinesPerStart; line < log_.LineCount();
       line += kLinesPerStart) {
    size_t start = starts_.back();
    for (size_t i = line - kLinesPerStart; i < line; ++i) start += UnitsIn(log_.Line(i)) + 1;
    starts_.push_back(start);
  }
}

size_t ChatOffsets::LineStart(size_t line) {
  CatchUp();
  size_t start = starts_[line / kLinesPerStart];
  for (size_t i = line - line % kLinesPerStart; i < line; ++i) start += UnitsIn(log_.Line(i)) + 1;
  return start;
}

int ChatOffsets::OffsetOf(LogPosition position) {
  const std::string_view before = log_.Line(position.line).substr(0, position.byte);
  return static_cast<int>(LineStart(position.line) + UnitsIn(before));
}

LogPosition ChatOffsets::PositionOf(int offset) {
  CatchUp();
  const auto wanted = static_cast<size_t>(std::max(offset, 0));
  const auto block = std::upper_bound(starts_.begin(), starts_.end(), wanted) - 1;
  size_t line = static_cast<size_t>(block - starts_.begin()) * kLinesPerStart;
  size_t start = *block;
  for (size_t units = UnitsIn(log_.Line(line)); start + units < wanted;
       units = UnitsIn(log_.Line(line))) {
    if (line + 1 == log_.LineCount()) return log_.End();
    start += units + 1;
    ++line;
  }
  return {line, ByteOfUnit(log_.Line(line), wanted - start)};
}

ChatAccessible::ChatAccessible(ChatTextView* view)
    : QAccessibleWidget(view, QAccessible::EditableText), offsets_(view->Log()) {}

ChatTextView& ChatAccessible::View() const { return *static_cast<ChatTextView*>(object()); }

void* ChatAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QAccessible::State ChatAccessible::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.readOnly = true;
  state.multiLine = true;
  state.selectableText = true;
  return state;
}

void ChatAccessible::selection(int index, int* start, int* end) const {
  const LogRange range = index == 0 ? View().Selection() : LogRange{};
  *start = offsets_.OffsetOf(range.begin);
  *end = offsets_.OffsetOf(range.end);
}

int ChatAccessible::selectionCount() const { return View().Selection().IsEmpty() ? 0 : 1; }

void ChatAccessible::removeSelection(int index) {
  if (index == 0) View().Select({View().Selection().end, View().Selection().end});
}

void ChatAccessible::setSelection(int index, int start, int end) {
  if (index != 0) return;
  const auto [from, to] = std::minmax(start, end);
  View().Select({offsets_.PositionOf(from), offsets_.PositionOf(to)});
}

int ChatAccessible::cursorPosition() const { return offsets_.OffsetOf(View().Selection().end); }

void ChatAccessible::setCursorPosition(int offset) {
  const LogPosition position = offsets_.PositionOf(offset);
  View().Select({position, position});
  View().ShowPosition(position);
}

QString ChatAccessible::text(int start, int end) const {
  start = std::max(start, 0);
  end = std::min(end, start + kMostText);
  if (start >= end) return {};
  const LogRange range{offsets_.PositionOf(start), offsets_.PositionOf(end)};
  return ToQString(View().Log().PlainText(range));
}

int ChatAccessible::characterCount() const { return offsets_.OffsetOf(View().Log().End()); }

// Looks no further than the lines beside the one at `offset`.
QString ChatAccessible::Piece(int offset, QAccessible::TextBoundaryType type, Which which,
                              int* start, int* end) const {
  const ChatLog& log = View().Log();
  const LogPosition at = offsets_.PositionOf(offset);
  const size_t first = at.line == 0 ? 0 : at.line - 1;
  const size_t last = std::min(at.line + 1, log.LineCount() - 1);
  const int base = offsets_.OffsetOf({first, 0});
  const QString near =
      ToQString(log.PlainText({{first, 0}, {last, log.Line(last).size()}})) + QLatin1Char('\n');

  std::vector<qsizetype> bounds = {0};
  if (type == QAccessible::NoBoundary) {
    bounds.push_back(near.size() - 1);
  } else if (type == QAccessible::LineBoundary || type == QAccessible::ParagraphBoundary) {
    for (qsizetype i = 0; i < near.size(); ++i) {
      if (near[i] == '\n') bounds.push_back(i + 1);
    }
  } else {
    QTextBoundaryFinder finder(FinderType(type), near);
    for (qsizetype i = finder.toNextBoundary(); i >= 0; i = finder.toNextBoundary()) {
      bounds.push_back(i);
    }
  }
  // The piece that holds the offset lies before the first bound after it.
  auto after = std::upper_bound(bounds.begin() + 1, bounds.end(), offset - base);
  if (which == Which::kBefore && after != bounds.begin() + 1)
    --after;
  else if (which == Which::kBefore)
    after = bounds.end();
  else if (which == Which::kAfter && after != bounds.end())
    ++after;
  if (after == bounds.end()) {
    *start = *end = offset;
    return {};
  }
  const qsizetype from = *(after - 1);
  *start = base + static_cast<int>(from);
  *end = std::min(base + static_cast<int>(*after), characterCount());
  return near.mid(from, *end - *start);
}

QString ChatAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                                         int* end) const {
  return Piece(offset, type, Which::kBefore, start, end);
}

QString ChatAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                                     int* end) const {
  return Piece(offset, type, Which::kAt, start, end);
}

QString ChatAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                                        int* end) const {
  return Piece(offset, type, Which::kAfter, start, end);
}

QRect ChatAccessible::characterRect(int offset) const {
  const QRect rect = View().RectOf(offsets_.PositionOf(offset));
  if (rect.isNull()) return {};
  return {View().viewport()->mapToGlobal(rect.topLeft()), rect.size()};
}

int ChatAccessible::offsetAtPoint(const QPoint& point) const {
  return offsets_.OffsetOf(View().PositionAt(View().viewport()->mapFromGlobal(point)));
}

void ChatAccessible::scrollToSubstring(int start, int end) {
  View().ShowPosition(offsets_.PositionOf(end));
  View().ShowPosition(offsets_.PositionOf(start));
}

// The text colour, over the run it covers.
QString ChatAccessible::attributes(int offset, int* start, int* end) const {
  const LogPosition at = offsets_.PositionOf(offset);
  size_t begin = 0;
  for (const LogRun& run : View().Log().Runs(at.line)) {
    const size_t runEnd = begin + run.length;
    if (at.byte < runEnd) {
      *start = offsets_.OffsetOf({at.line, begin});
      *end = offsets_.OffsetOf({at.line, runEnd});
      const Colour c = run.colour;
      return QString("color:rgb(%1,%2,%3);").arg(c.red).arg(c.green).arg(c.blue);
    }
    begin = runEnd;
  }
  *start = *end = offset;
  return {};
}

}  // namespace brindle
