#include "ui/chat_layout.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <cmath>

#include "base/utf8.h"
#include "irc/chat_style.h"
#include "irc/link_finder.h"
#include "ui/look.h"
#include "ui/qt_text.h"
#include "ui/readable_colour.h"
#include "ui/utf16_offsets.h"

namespace brindle {
namespace {

constexpr size_t kSegmentBytes = 2048;
// How far before the end of a segment a blank is looked for to cut at.
constexpr size_t kCutBytes = 64;
// More than any screen shows, so that a page is never laid out twice.
constexpr size_t kCacheSegments = 400;
constexpr int kSegmentBits = 24;
constexpr double kLineHeight = 1.3;  // of the font's own
// Rows behind the time are at least this many times as long as the time.
constexpr int kLeastRows = 3;
constexpr size_t kShortestRule = 20;  // hyphens

QString ShownText(std::string_view text) {
  QString shown = ToQString(text);
  // Only a CR LF breaks a line; the toolkit knows some more characters that would.
  for (QChar& c : shown) {
    if (c == '\n' || c == '\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator) {
      c = ' ';
    }
  }
  return shown;
}

}  // namespace

struct ChatLayout::LaidOut {
  size_t begin = 0;
  size_t end = 0;
  bool ascii = false;  // one unit for each byte
  QTextLayout layout;
};

ChatLayout::ChatLayout(const ChatLog& log) : log_(log) { SetFont(QFont()); }
ChatLayout::~ChatLayout() = default;

void ChatLayout::SetFont(const QFont& font) {
  const QFontMetricsF metrics(font);
  font_ = font;
  const double natural = std::max(metrics.height(), metrics.lineSpacing());
  rowHeight_ = std::max(1, static_cast<int>(std::ceil(kLineHeight * natural)));
  const int above = (rowHeight_ - static_cast<int>(std::ceil(natural))) / 2;
  ascent_ = above + static_cast<int>(std::ceil(metrics.ascent()));
  Forget();
}

void ChatLayout::SetWidth(int width) {
  if (width == width_) return;
  width_ = width;
  Forget();
}

void ChatLayout::SetPaper(const ChatPaper& paper) {
  if (paper == paper_) return;
  paper_ = paper;
  Forget();
}

Colour ChatLayout::Shown(Colour colour) const {
  const Colour meant = colour == kBlack ? paper_.text : colour;
  return paper_.ink == ChatInk::kReadable ? ReadableOn(meant, paper_.background) : meant;
}

void ChatLayout::Forget() {
  recent_.clear();
  older_.clear();
}

size_t ChatLayout::SegmentCount(size_t line) const {
  const size_t size = log_.Line(line).size();
  return size == 0 ? 1 : (size + kSegmentBytes - 1) / kSegmentBytes;
}

// Depends on nothing but the text before it, so any segment can be found without the others and
// stays where it is when the line grows.
size_t ChatLayout::SegmentBegin(std::string_view text, size_t index) const {
  const size_t at = index * kSegmentBytes;
  if (index == 0 || at >= text.size()) return std::min(at, text.size());
  const size_t blank = text.substr(at - kCutBytes, kCutBytes).rfind(' ');
  if (blank != std::string_view::npos) return at - kCutBytes + blank + 1;
  return CharacterBegin(text, at);
}

Segment ChatLayout::SegmentAt(LogPosition position) const {
  const std::string_view text = log_.Line(position.line);
  const size_t last = SegmentCount(position.line) - 1;
  size_t index = std::min(position.byte / kSegmentBytes, last);
  if (index < last && position.byte >= SegmentBegin(text, index + 1)) ++index;
  return {position.line, index};
}

Segment ChatLayout::Last() const {
  const size_t line = log_.LineCount() - 1;
  return {line, SegmentCount(line) - 1};
}

bool ChatLayout::ToNext(Segment& segment) const {
  if (segment.index + 1 < SegmentCount(segment.line)) {
    ++segment.index;
  } else if (segment.line + 1 < log_.LineCount()) {
    segment = {segment.line + 1, 0};
  } else {
    return false;
  }
  return true;
}

bool ChatLayout::ToPrevious(Segment& segment) const {
  if (segment.index > 0) {
    --segment.index;
  } else if (segment.line > 0) {
    segment = {segment.line - 1, SegmentCount(segment.line - 1) - 1};
  } else {
    return false;
  }
  return true;
}

ChatLayout::LaidOut& ChatLayout::Lay(Segment segment) {
  const std::string_view text = log_.Line(segment.line);
  const size_t begin = SegmentBegin(text, segment.index);
  const size_t end = segment.index + 1 < SegmentCount(segment.line)
                         ? SegmentBegin(text, segment.index + 1)
                         : text.size();
  const std::uint64_t key = (static_cast<std::uint64_t>(segment.line) << kSegmentBits) |
                            static_cast<std::uint64_t>(segment.index);
  auto found = recent_.find(key);
  if (found == recent_.end()) {
    if (recent_.size() >= kCacheSegments) {
      older_ = std::move(recent_);
      recent_.clear();
    }
    auto old = older_.extract(key);
    if (old.empty()) {
      found = recent_.emplace(key, nullptr).first;
    } else {
      found = recent_.insert(std::move(old)).position;
    }
  }
  // The last line may have grown since.
  if (!found->second || found->second->end != end) {
    found->second = MakeLayout(segment, begin, end);
  }
  return *found->second;
}

std::unique_ptr<ChatLayout::LaidOut> ChatLayout::MakeLayout(Segment segment, size_t begin,
                                                            size_t end) const {
  auto laid = std::make_unique<LaidOut>();
  laid->begin = begin;
  laid->end = end;
  const QString text = ShownText(SegmentText(*laid, segment.line));
  laid->ascii = text.size() == static_cast<qsizetype>(end - begin);

  QList<QTextLayout::FormatRange> formats;
  size_t runBegin = 0;
  for (const LogRun& run : log_.Runs(segment.line)) {
    const size_t runEnd = runBegin + run.length;
    if (runEnd > begin && runBegin < end) {
      QTextLayout::FormatRange format;
      format.start = UnitOf(*laid, {segment.line, runBegin});
      format.length = UnitOf(*laid, {segment.line, runEnd}) - format.start;
      format.format.setForeground(ToQColor(Shown(run.colour)));
      formats.append(format);
    }
    runBegin = runEnd;
  }
  AddLinks(*laid, segment.line, formats);

  QTextLayout& layout = laid->layout;
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setTextDirection(Qt::LeftToRight);  // every line begins with what the program wrote
  layout.setText(text);
  layout.setFont(font_);
  layout.setTextOption(option);
  layout.setFormats(formats);
  layout.setCacheEnabled(true);
  layout.beginLayout();
  const int hang = HangOf(segment.line);
  int row = 0;
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    const int left = segment.index == 0 && row == 0 ? 0 : hang;
    line.setLineWidth(width_ - left);
    // Fonts that stand in for missing characters are of other heights; the base lines agree.
    line.setPosition(QPointF(left, row * rowHeight_ + ascent_ - std::ceil(line.ascent())));
    ++row;
  }
  layout.endLayout();
  return laid;
}

int ChatLayout::HangOf(size_t line) const {
  const std::string_view text = log_.Line(line);
  const QString time = ToQString(text.substr(0, TimeLength(text)));
  if (time.isEmpty()) return 0;
  const auto hang = static_cast<int>(std::ceil(QFontMetricsF(font_).horizontalAdvance(time)));
  return hang * (kLeastRows + 1) <= width_ ? hang : 0;
}

void ChatLayout::AddLinks(const LaidOut& laid, size_t line,
                          QList<QTextLayout::FormatRange>& formats) const {
  for (const LinkRange& link : FindLinks(SegmentText(laid, line))) {
    QTextLayout::FormatRange format;
    format.start = UnitOf(laid, {line, laid.begin + link.begin});
    format.length = UnitOf(laid, {line, laid.begin + link.end}) - format.start;
    format.format.setForeground(ToQColor(Shown(FromQColor(CurrentColours().link))));
    format.format.setFontUnderline(true);
    formats.append(format);
  }
}

std::optional<LogRange> ChatLayout::LinkAt(LogPosition position) {
  const LaidOut& laid = Lay(SegmentAt(position));
  for (const LinkRange& link : FindLinks(SegmentText(laid, position.line))) {
    const LogRange range{{position.line, laid.begin + link.begin},
                         {position.line, laid.begin + link.end}};
    if (range.begin <= position && position < range.end) return range;
  }
  return std::nullopt;
}

bool ChatLayout::IsRule(size_t line) const {
  const std::string_view text = log_.Line(line);
  return text.size() >= kShortestRule && text.find_first_not_of('-') == std::string_view::npos;
}

std::string_view ChatLayout::SegmentText(const LaidOut& laid, size_t line) const {
  return log_.Line(line).substr(laid.begin, laid.end - laid.begin);
}

int ChatLayout::UnitOf(const LaidOut& laid, LogPosition position) const {
  const size_t byte = std::clamp(position.byte, laid.begin, laid.end) - laid.begin;
  if (laid.ascii) return static_cast<int>(byte);
  return static_cast<int>(UnitsIn(SegmentText(laid, position.line).substr(0, byte)));
}

LogPosition ChatLayout::PositionOf(const LaidOut& laid, size_t line, int unit) const {
  const auto units = static_cast<size_t>(std::max(unit, 0));
  const size_t byte = laid.ascii ? units : ByteOfUnit(SegmentText(laid, line), units);
  return {line, std::min(laid.begin + byte, laid.end)};
}

int ChatLayout::Height(Segment segment) {
  if (segment.line == 0 && log_.LineCount() > 1 && log_.Line(0).empty()) return 0;
  return std::max(1, Lay(segment).layout.lineCount()) * rowHeight_;
}

int ChatLayout::RowOf(LogPosition position) {
  const LaidOut& laid = Lay(SegmentAt(position));
  const QTextLine line = laid.layout.lineForTextPosition(UnitOf(laid, position));
  return line.isValid() ? line.lineNumber() : 0;
}

LogPosition ChatLayout::RowBegin(Segment segment, int row) {
  const LaidOut& laid = Lay(segment);
  const QTextLine line = laid.layout.lineAt(std::min(row, laid.layout.lineCount() - 1));
  return PositionOf(laid, segment.line, line.isValid() ? line.textStart() : 0);
}

LogPosition ChatLayout::PositionAt(Segment segment, QPoint point) {
  const LaidOut& laid = Lay(segment);
  const int lastRow = std::max(0, laid.layout.lineCount() - 1);
  const int row = std::clamp(point.y() / rowHeight_, 0, lastRow);
  const QTextLine line = laid.layout.lineAt(row);
  if (!line.isValid()) return {segment.line, laid.begin};
  return PositionOf(laid, segment.line, line.xToCursor(point.x()));
}

QRect ChatLayout::CharacterRect(LogPosition position) {
  const LaidOut& laid = Lay(SegmentAt(position));
  const int unit = UnitOf(laid, position);
  const QTextLine line = laid.layout.lineForTextPosition(unit);
  if (!line.isValid()) return {0, 0, 1, rowHeight_};
  const qreal from = line.cursorToX(unit);
  const qreal to = line.cursorToX(laid.layout.nextCursorPosition(unit));
  const auto left = static_cast<int>(std::min(from, to));
  const auto right = static_cast<int>(std::ceil(std::max(from, to)));
  return {left, line.lineNumber() * rowHeight_, std::max(1, right - left), rowHeight_};
}

LogPosition ChatLayout::Next(LogPosition position) {
  if (position.byte >= log_.Line(position.line).size()) {
    return position.line + 1 < log_.LineCount() ? LogPosition{position.line + 1, 0} : position;
  }
  const LaidOut& laid = Lay(SegmentAt(position));
  return PositionOf(laid, position.line, laid.layout.nextCursorPosition(UnitOf(laid, position)));
}

LogPosition ChatLayout::Previous(LogPosition position) {
  if (position.byte == 0) {
    if (position.line == 0) return position;
    return {position.line - 1, log_.Line(position.line - 1).size()};
  }
  const LaidOut& laid = Lay(SegmentAt({position.line, position.byte - 1}));
  return PositionOf(laid, position.line,
                    laid.layout.previousCursorPosition(UnitOf(laid, position)));
}

void ChatLayout::Draw(QPainter& painter, Segment segment, QPoint origin, const LogRange& selected,
                      const QPalette& palette) {
  LaidOut& laid = Lay(segment);
  QList<QTextLayout::FormatRange> highlights;
  const auto [begin, end] = log_.PartOfLine(segment.line, selected);
  const size_t from = std::max(begin, laid.begin);
  const size_t to = std::min(end, laid.end);
  if (from < to) {
    QTextLayout::FormatRange highlight;
    highlight.start = UnitOf(laid, {segment.line, from});
    highlight.length = UnitOf(laid, {segment.line, to}) - highlight.start;
    highlight.format.setBackground(palette.brush(QPalette::Highlight));
    highlight.format.setForeground(palette.brush(QPalette::HighlightedText));
    highlights.append(highlight);
  }
  // Lines are repainted one by one, so none may reach into its neighbour: stacked marks would.
  const int rows = std::max(1, laid.layout.lineCount());
  painter.save();
  painter.setClipRect(QRect(0, origin.y(), width_ + 2 * origin.x(), rows * rowHeight_),
                      Qt::IntersectClip);
  if (IsRule(segment.line) && highlights.isEmpty()) {
    painter.setPen(ToQColor(Shown(log_.Runs(segment.line).front().colour)));
    painter.drawLine(origin.x(), origin.y() + rowHeight_ / 2, origin.x() + width_,
                     origin.y() + rowHeight_ / 2);
  } else {
    laid.layout.draw(&painter, origin, highlights);
  }

  // A selected line break shows as a narrow bar, so that selected empty lines can be seen.
  const LogPosition lineEnd{segment.line, log_.Line(segment.line).size()};
  if (laid.end == lineEnd.byte && selected.begin <= lineEnd && lineEnd < selected.end &&
      laid.layout.lineCount() > 0) {
    const QTextLine last = laid.layout.lineAt(laid.layout.lineCount() - 1);
    const int x = origin.x() + static_cast<int>(std::ceil(last.x() + last.naturalTextWidth()));
    const int y = origin.y() + last.lineNumber() * rowHeight_;
    painter.fillRect(x, y, rowHeight_ / 3, rowHeight_, palette.brush(QPalette::Highlight));
  }
  painter.restore();
}

}  // namespace brindle
