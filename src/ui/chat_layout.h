#pragma once
// Lays out the lines of a chat log in rows of one height, only those that are asked for. A long
// line is laid out in segments of some two thousand bytes, each beginning a row of its own, so that
// no line can hold up the view. Offsets are bytes of the line, measures are pixels.

#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QRect>
#include <QTextLayout>
#include <compare>
#include <memory>
#include <optional>
#include <unordered_map>

#include "base/colour.h"
#include "irc/chat_log.h"

namespace brindle {

struct Segment {
  size_t line = 0;
  size_t index = 0;  // within the line
  friend auto operator<=>(const Segment&, const Segment&) = default;
};

// How the log's colours are shown: as they are, or shifted until they can be read.
enum class ChatInk { kAsSent, kReadable };

// What the colours stand on, and the colour of text that has none of its own, which is black.
struct ChatPaper {
  Colour background = kWhite;
  Colour text = kBlack;
  ChatInk ink = ChatInk::kAsSent;
  friend bool operator==(const ChatPaper&, const ChatPaper&) = default;
};

class ChatLayout {
 public:
  explicit ChatLayout(const ChatLog& log);
  ~ChatLayout();

  // These forget every layout when something changes.
  void SetFont(const QFont& font);
  void SetWidth(int width);
  void SetPaper(const ChatPaper& paper);

  int RowHeight() const { return rowHeight_; }

  // The lines of the log have other numbers now.
  void Forget();

  // Segments of a line, at least 1.
  size_t SegmentCount(size_t line) const;
  Segment SegmentAt(LogPosition position) const;
  Segment Last() const;
  // False, with `segment` unchanged, at the end or beginning of the log.
  bool ToNext(Segment& segment) const;
  bool ToPrevious(Segment& segment) const;

  // 0 for the empty first line once there are others, else a positive multiple of RowHeight().
  int Height(Segment segment);

  // The row of a position within its segment, and where a row begins.
  int RowOf(LogPosition position);
  LogPosition RowBegin(Segment segment, int row);

  // The place between characters nearest to `point`, which counts from the segment's top left.
  LogPosition PositionAt(Segment segment, QPoint point);
  // The character after a position, from its segment's top left.
  QRect CharacterRect(LogPosition position);
  // The next or previous place between characters as the user sees them; may be on another line.
  LogPosition Next(LogPosition position);
  LogPosition Previous(LogPosition position);

  // The web address at a position, if there is one.
  std::optional<LogRange> LinkAt(LogPosition position);

  // Draws a segment with its top left at `origin`, the selected part highlighted.
  void Draw(QPainter& painter, Segment segment, QPoint origin, const LogRange& selected,
            const QPalette& palette);

 private:
  struct LaidOut;
  using Cache = std::unordered_map<std::uint64_t, std::unique_ptr<LaidOut>>;

  size_t SegmentBegin(std::string_view text, size_t index) const;
  std::string_view SegmentText(const LaidOut& laid, size_t line) const;
  LaidOut& Lay(Segment segment);
  std::unique_ptr<LaidOut> MakeLayout(Segment segment, size_t begin, size_t end) const;
  int UnitOf(const LaidOut& laid, LogPosition position) const;
  LogPosition PositionOf(const LaidOut& laid, size_t line, int unit) const;
  // How far rows after a line's first are set in: they stand behind its time.
  int HangOf(size_t line) const;
  void AddLinks(const LaidOut& laid, size_t line, QList<QTextLayout::FormatRange>& formats) const;
  // A line of nothing but hyphens is shown as a rule.
  bool IsRule(size_t line) const;
  // A run's colour on the paper.
  Colour Shown(Colour colour) const;

  const ChatLog& log_;
  QFont font_;
  ChatPaper paper_;
  int width_ = 1;
  int rowHeight_ = 1;
  int ascent_ = 1;  // from a row's top to its base line
  Cache recent_;
  Cache older_;  // thrown away when recent_ is full
};

}  // namespace brindle
