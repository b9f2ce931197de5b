#pragma once
// What a screen reader sees of a chat view: a read-only text of many lines. Offsets are UTF-16
// units, a line break counts as one. Nothing here costs anything until it is asked for.

#include <QAccessibleWidget>
#include <vector>

#include "irc/chat_log.h"

namespace brindle {

class ChatTextView;

// Makes chat views accessible; once is enough, again does no harm.
void InstallChatAccessibility();

// Tells assistive technology of the text that was appended from `from` on.
void NotifyAppended(ChatTextView& view, LogPosition from);

// Tells it that this text went from the front.
void NotifyRemoved(ChatTextView& view, const QString& text);

// Between offsets in the whole text and positions in a log that grows at its end and shrinks at
// its front.
class ChatOffsets {
 public:
  explicit ChatOffsets(const ChatLog& log) : log_(log) {}

  int OffsetOf(LogPosition position);
  LogPosition PositionOf(int offset);

 private:
  void CatchUp();
  size_t LineStart(size_t line);

  const ChatLog& log_;
  std::vector<size_t> starts_;  // of every so many lines
  size_t dropped_ = 0;          // from the log, when they were counted
};

class ChatAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit ChatAccessible(ChatTextView* view);

  void* interface_cast(QAccessible::InterfaceType type) override;
  QAccessible::State state() const override;

  void selection(int index, int* start, int* end) const override;
  int selectionCount() const override;
  void addSelection(int start, int end) override { setSelection(0, start, end); }
  void removeSelection(int index) override;
  void setSelection(int index, int start, int end) override;
  int cursorPosition() const override;
  void setCursorPosition(int offset) override;

  using QAccessibleWidget::text;
  // At most kMostText units from `start` on: nobody can listen to more at a time.
  QString text(int start, int end) const override;
  QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                           int* end) const override;
  QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                       int* end) const override;
  QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                          int* end) const override;
  int characterCount() const override;
  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;
  void scrollToSubstring(int start, int end) override;
  QString attributes(int offset, int* start, int* end) const override;

  int OffsetOf(LogPosition position) const { return offsets_.OffsetOf(position); }

  static constexpr int kMostText = 100'000;

 private:
  enum class Which { kBefore, kAt, kAfter };
  QString Piece(int offset, QAccessible::TextBoundaryType type, Which which, int* start,
                int* end) const;
  ChatTextView& View() const;

  mutable ChatOffsets offsets_;
};

}  // namespace brindle
