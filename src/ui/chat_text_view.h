#pragma once
// A view of coloured chat text that grows at its end, made for very long logs: it keeps the text in
// a ChatLog, lays out what it shows and nothing else, and gathers many appended lines into one
// repaint. It follows the end only while the user is there, and says when a mouse selection begins
// and ends, so that no text arrives under it. The empty first line, which comes of texts beginning
// with a line break, takes no space.

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <cstdint>
#include <optional>

#include "irc/chat_colours.h"
#include "irc/chat_log.h"
#include "irc/chat_log_find.h"
#include "ui/chat_layout.h"
#include "ui/chat_scroll.h"
#include "ui/chat_selection.h"

class QMenu;
class QPushButton;

namespace brindle {

class ChatFindBar;

class ChatTextView : public QAbstractScrollArea, public ChatView {
  Q_OBJECT

 public:
  explicit ChatTextView(QWidget* parent = nullptr);

  // Shown with the next turn of the event loop.
  void Append(const std::vector<ColouredRun>& runs) override;
  size_t TextLength() const override { return log_.TextLength(); }

  // At most so many lines are kept; when there are more, a sixteenth of them goes, the oldest
  // first.
  void KeepAtMost(size_t lines);

  // Without a colour, the background and the uncoloured text are the theme's.
  void SetBackColour(std::optional<Colour> colour);
  void SetInk(ChatInk ink);

  const ChatLog& Log() const { return log_; }
  // All lines, with a line feed between each two.
  QString PlainText() const;

  LogRange Selection() const { return selection_.Range(); }
  QString SelectedText() const;
  void Select(const LogRange& range);
  void SelectAll();
  // To the clipboard; nothing when nothing is selected.
  void Copy() const;

  // Whether what is appended scrolls into sight.
  bool IsFollowing() const { return following_; }
  // Scrolls as little as needed to show a position.
  void ShowPosition(LogPosition position);

  // The place nearest to a point of the viewport; and back, for a position that is in sight.
  LogPosition PositionAt(QPoint point);
  QRect RectOf(LogPosition position);

  // Opens the find bar.
  void OpenFind();

 signals:
  // True from the press of the left mouse button to its release.
  void Selecting(bool active);
  // Text came to the end.
  void Grew();
  // The user clicked a web address.
  void LinkClicked(const QString& address);

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void timerEvent(QTimerEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  // Drops what is beyond the bound; what stays is shown, selected and marked as before.
  void DropOldest();
  // Takes what was appended since the last time onto the screen.
  void Settle();
  // Takes up the colours of the palette.
  void ChangePaper();
  // After a change of width or font: keeps the first row's text at the top.
  template <typename Change>
  void LayOutAgain(Change change);

  // Stands at `place` or, where that is beyond it, at the end.
  void SetTop(Place place);
  void ScrollBy(int pixels);
  int PageHeight() const;
  void UpdateBar();
  void OnBarAction(int action);
  // Moves what is on screen after top_ has moved from `before`.
  void ShiftScreen(Place before);

  // Calls `use(segment, y)` for each segment in sight until it returns false.
  template <typename Use>
  void ForEachVisible(Use use);
  void UpdateLines(size_t first, size_t last);
  template <typename Change>
  void ChangeSelection(Change change);
  LogPosition FirstShown() const;

  // The rule above what was said while the view was out of sight.
  void DrawUnreadMark(QPainter& painter, Segment segment, int y) const;
  // How many lines came below what is in sight.
  void UpdatePill();

  std::optional<LogRange> LinkUnder(QPoint point);
  std::optional<LogRange> LinkForKeys();
  QString TextOf(const LogRange& range) const;
  void AddLinkItems(QMenu& menu, const QString& address);

  void SetSelecting(bool active);
  void DragTo(QPoint point);
  bool ScrollByKey(const QKeyEvent& event);
  bool ExtendByKey(const QKeyEvent& event);
  LogPosition RowAway(LogPosition position, int rows);

  void CloseFind();
  void Find(FindDirection direction, LogPosition from);
  void FindAgain(FindDirection direction);
  LogPosition FindStart();
  void PlaceFindBar();

  ChatLog log_;
  size_t mostLines_ = SIZE_MAX;
  ChatLayout layout_{log_};
  ChatScroll scroll_{log_, layout_};
  ChatSelection selection_{log_};
  ChatFindBar* findBar_;
  QPushButton* pill_;  // leads to the end

  Place top_;
  Place end_;  // where the view stands at the end of the log
  bool following_ = true;
  bool updatingBar_ = false;
  // The text kept at the top while the width changes; nothing once the user has scrolled.
  std::optional<LogPosition> topText_;
  std::optional<size_t> firstUnsettled_;  // the line at which appending began
  bool settlePosted_ = false;
  std::optional<size_t> firstUnread_;  // the first line since the view was last hidden
  size_t seenLines_ = 0;               // lines that were there when the view last stood at the end

  bool selecting_ = false;
  QPoint dragPoint_;
  QBasicTimer dragScroll_;
  QElapsedTimer sinceDoubleClick_;
  QPoint doubleClickPoint_;
  int wheelRemainder_ = 0;
  bool hasOwnBack_ = false;
  ChatInk ink_ = ChatInk::kAsSent;
};

}  // namespace brindle
