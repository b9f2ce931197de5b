// The chat view's mouse, keys, selection and find bar; what it shows is in chat_text_view.cpp.

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTimerEvent>
#include <QWheelEvent>

#include "irc/link_finder.h"
#include "ui/chat_find_bar.h"
#include "ui/chat_text_view.h"
#include "ui/pop_up.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kDragScrollMilliseconds = 30;
constexpr int kLinkWidth = 300;  // of an address in the menu
constexpr int kWheelStep = 120;  // what the toolkit counts for one notch
// More than this is not offered to other programs merely because it is selected.
constexpr size_t kMostPrimaryLines = 50'000;

bool IsOwnShortcut(const QKeyEvent& event) {
  for (const auto key : {QKeySequence::Copy, QKeySequence::SelectAll, QKeySequence::Find,
                         QKeySequence::FindNext, QKeySequence::FindPrevious}) {
    if (event.matches(key)) return true;
  }
  return false;
}

}  // namespace

template <typename Change>
void ChatTextView::ChangeSelection(Change change) {
  const LogRange before = selection_.Range();
  change();
  const LogRange after = selection_.Range();
  if (before == after) return;
  if (before.IsEmpty() || after.IsEmpty()) {
    const LogRange shown = before.IsEmpty() ? after : before;
    return UpdateLines(shown.begin.line, shown.end.line);
  }
  const auto [firstBegin, lastBegin] = std::minmax(before.begin.line, after.begin.line);
  const auto [firstEnd, lastEnd] = std::minmax(before.end.line, after.end.line);
  if (before.begin != after.begin) UpdateLines(firstBegin, lastBegin);
  if (before.end != after.end) UpdateLines(firstEnd, lastEnd);
}

// The first line is empty where the text begins with a line break.
LogPosition ChatTextView::FirstShown() const {
  return {log_.LineCount() > 1 && log_.Line(0).empty() ? size_t{1} : size_t{0}, 0};
}

QString ChatTextView::SelectedText() const { return TextOf(selection_.Range()); }

void ChatTextView::Select(const LogRange& range) {
  ChangeSelection([&] { selection_.Set(range); });
}

void ChatTextView::SelectAll() { Select({FirstShown(), log_.End()}); }

void ChatTextView::Copy() const {
  if (!selection_.IsEmpty()) QApplication::clipboard()->setText(SelectedText());
}

void ChatTextView::SetSelecting(bool active) {
  if (selecting_ == active) return;
  selecting_ = active;
  if (!active) dragScroll_.stop();
  emit Selecting(active);
}

void ChatTextView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mousePressEvent(event);
  SetSelecting(true);
  dragPoint_ = event->position().toPoint();
  const LogPosition position = PositionAt(dragPoint_);
  const bool third =
      sinceDoubleClick_.isValid() &&
      !sinceDoubleClick_.hasExpired(QApplication::doubleClickInterval()) &&
      (dragPoint_ - doubleClickPoint_).manhattanLength() < QApplication::startDragDistance();
  sinceDoubleClick_.invalidate();
  ChangeSelection([&] {
    if (event->modifiers().testFlag(Qt::ShiftModifier)) {
      selection_.ExtendTo(position);
    } else {
      selection_.Start(position, third ? SelectionUnit::kLine : SelectionUnit::kCharacter);
    }
  });
}

void ChatTextView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  SetSelecting(true);
  dragPoint_ = event->position().toPoint();
  doubleClickPoint_ = dragPoint_;
  sinceDoubleClick_.start();
  const LogPosition position = PositionAt(dragPoint_);
  ChangeSelection([&] { selection_.Start(position, SelectionUnit::kWord); });
}

void ChatTextView::mouseMoveEvent(QMouseEvent* event) {
  if (!selecting_) {
    const bool link = LinkUnder(event->position().toPoint()).has_value();
    viewport()->setCursor(link ? Qt::PointingHandCursor : Qt::IBeamCursor);
    return;
  }
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  DragTo(event->position().toPoint());
  const bool outside = dragPoint_.y() < 0 || dragPoint_.y() >= viewport()->height();
  if (!outside) {
    dragScroll_.stop();
  } else if (!dragScroll_.isActive()) {
    dragScroll_.start(kDragScrollMilliseconds, this);
  }
}

void ChatTextView::DragTo(QPoint point) {
  dragPoint_ = point;
  const int bottom = std::max(0, viewport()->height() - 1);
  const LogPosition position = PositionAt({point.x(), std::clamp(point.y(), 0, bottom)});
  ChangeSelection([&] { selection_.ExtendTo(position); });
}

void ChatTextView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != dragScroll_.timerId()) return QAbstractScrollArea::timerEvent(event);
  // The further out the mouse, the faster.
  const int below = dragPoint_.y() - viewport()->height();
  const int beyond = below >= 0 ? below + 1 : std::min(0, dragPoint_.y());
  const int row = layout_.RowHeight();
  ScrollBy((beyond / row + (beyond > 0 ? 1 : -1)) * row);
  DragTo(dragPoint_);
}

void ChatTextView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mouseReleaseEvent(event);
  SetSelecting(false);
  QClipboard* clipboard = QApplication::clipboard();
  const LogRange range = selection_.Range();
  if (range.IsEmpty()) {
    if (const auto link = LinkUnder(event->position().toPoint())) emit LinkClicked(TextOf(*link));
  }
  if (clipboard->supportsSelection() && !range.IsEmpty() &&
      range.end.line - range.begin.line <= kMostPrimaryLines) {
    clipboard->setText(SelectedText(), QClipboard::Selection);
  }
}

void ChatTextView::focusOutEvent(QFocusEvent* event) {
  // The release may go to another window; the chat must not stand still for it.
  SetSelecting(false);
  QAbstractScrollArea::focusOutEvent(event);
}

void ChatTextView::hideEvent(QHideEvent* event) {
  SetSelecting(false);
  firstUnread_ = log_.LineCount();
  QAbstractScrollArea::hideEvent(event);
}

void ChatTextView::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (const int pixels = event->pixelDelta().y(); pixels != 0) return ScrollBy(-pixels);
  // Fine wheels send parts of a notch.
  wheelRemainder_ += event->angleDelta().y() * QApplication::wheelScrollLines();
  const int rows = wheelRemainder_ / kWheelStep;
  wheelRemainder_ -= rows * kWheelStep;
  if (rows != 0) ScrollBy(-rows * layout_.RowHeight());
}

void ChatTextView::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const auto link = byKey ? LinkForKeys() : LinkUnder(event->pos());
  if (link) AddLinkItems(*menu, TextOf(*link));
  QAction* copy = AddMenuItem(*menu, "mnuChatCopy", "&Copy", [this] { Copy(); });
  copy->setShortcut(QKeySequence::Copy);
  copy->setEnabled(!selection_.IsEmpty());
  AddMenuItem(*menu, "mnuChatSelectAll", "Select &All", [this] {
    SelectAll();
  })->setShortcut(QKeySequence::SelectAll);
  AddMenuItem(*menu, "mnuChatFind", "&Find...", [this] {
    OpenFind();
  })->setShortcut(QKeySequence::Find);
  menu->popup(event->globalPos());
}

void ChatTextView::AddLinkItems(QMenu& menu, const QString& address) {
  // Told, for the keyboard points at nothing.
  QString told = fontMetrics().elidedText(address, Qt::ElideMiddle, kLinkWidth);
  AddMenuItem(menu, "mnuChatOpenLink", "&Open Link", [this, address] {
    emit LinkClicked(address);
  })->setText("&Open Link\t" + told.replace('&', "&&"));
  AddMenuItem(menu, "mnuChatCopyLink", "Copy &Link",
              [address] { QApplication::clipboard()->setText(address); });
  menu.addSeparator();
}

// A place between two characters belongs to either.
std::optional<LogRange> ChatTextView::LinkUnder(QPoint point) {
  const LogPosition place = PositionAt(point);
  for (const LogPosition position : {place, layout_.Previous(place)}) {
    if (RectOf(position).contains(point)) return layout_.LinkAt(position);
  }
  return std::nullopt;
}

// The one at the selection, else the last in sight.
std::optional<LogRange> ChatTextView::LinkForKeys() {
  if (const auto link = layout_.LinkAt(selection_.Range().begin); link && !selection_.IsEmpty()) {
    return link;
  }
  const size_t first = PositionAt({0, 0}).line;
  for (size_t line = PositionAt({0, viewport()->height() - 1}).line + 1; line-- > first;) {
    const std::vector<LinkRange> links = FindLinks(log_.Line(line));
    if (!links.empty()) return LogRange{{line, links.back().begin}, {line, links.back().end}};
  }
  return std::nullopt;
}

QString ChatTextView::TextOf(const LogRange& range) const {
  return ToQString(log_.PlainText(range));
}

// The window's own shortcuts must not take these while the chat has the keyboard.
bool ChatTextView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsOwnShortcut(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QAbstractScrollArea::event(event);
}

void ChatTextView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) return Copy();
  if (event->matches(QKeySequence::SelectAll)) return SelectAll();
  if (event->matches(QKeySequence::Find)) return OpenFind();
  if (event->matches(QKeySequence::FindNext)) return FindAgain(FindDirection::kForward);
  if (event->matches(QKeySequence::FindPrevious)) return FindAgain(FindDirection::kBackward);
  if (event->key() == Qt::Key_Escape && findBar_->isVisible()) return CloseFind();
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  if (!(shift ? ExtendByKey(*event) : ScrollByKey(*event))) event->ignore();
}

bool ChatTextView::ScrollByKey(const QKeyEvent& event) {
  const bool control = event.modifiers().testFlag(Qt::ControlModifier);
  const int key = event.key();
  if (key == Qt::Key_Up) {
    ScrollBy(-layout_.RowHeight());
  } else if (key == Qt::Key_Down) {
    ScrollBy(layout_.RowHeight());
  } else if (key == Qt::Key_PageUp) {
    ScrollBy(-PageHeight());
  } else if (key == Qt::Key_PageDown) {
    ScrollBy(PageHeight());
  } else if (key == Qt::Key_Home && control) {
    SetTop(scroll_.Moved({}, 0));
  } else if (key == Qt::Key_End && control) {
    SetTop(end_);
  } else {
    return false;
  }
  return true;
}

bool ChatTextView::ExtendByKey(const QKeyEvent& event) {
  const bool control = event.modifiers().testFlag(Qt::ControlModifier);
  const LogPosition caret = selection_.Caret();
  LogPosition to = caret;
  switch (event.key()) {
    case Qt::Key_Left:
      to = layout_.Previous(caret);
      break;
    case Qt::Key_Right:
      to = layout_.Next(caret);
      break;
    case Qt::Key_Up:
      to = RowAway(caret, -1);
      break;
    case Qt::Key_Down:
      to = RowAway(caret, 1);
      break;
    case Qt::Key_PageUp:
      to = RowAway(caret, -PageHeight() / layout_.RowHeight());
      break;
    case Qt::Key_PageDown:
      to = RowAway(caret, PageHeight() / layout_.RowHeight());
      break;
    case Qt::Key_Home:
      to = control ? FirstShown() : LogPosition{caret.line, 0};
      break;
    case Qt::Key_End:
      to = control ? log_.End() : LogPosition{caret.line, log_.Line(caret.line).size()};
      break;
    default:
      return false;
  }
  ChangeSelection([&] { selection_.ExtendTo(std::max(to, FirstShown())); });
  ShowPosition(selection_.Caret());
  return true;
}

// The position so many rows below or, where negative, above.
LogPosition ChatTextView::RowAway(LogPosition position, int rows) {
  const int x = layout_.CharacterRect(position).left();
  const int row = layout_.RowHeight();
  const Place place = scroll_.Moved(scroll_.PlaceOf(position), rows * row);
  return layout_.PositionAt(place.segment, {x, place.y});
}

void ChatTextView::OpenFind() {
  findBar_->ShowFound(true);
  findBar_->show();
  setViewportMargins(0, 0, 0, findBar_->sizeHint().height());
  PlaceFindBar();
  findBar_->Activate();
}

void ChatTextView::CloseFind() {
  setViewportMargins(0, 0, 0, 0);
  findBar_->hide();
  setFocus();
}

void ChatTextView::PlaceFindBar() {
  const QRect view = viewport()->geometry();
  findBar_->setGeometry(view.left(), view.bottom() + 1, view.width(),
                        findBar_->sizeHint().height());
}

void ChatTextView::FindAgain(FindDirection direction) {
  if (findBar_->Text().isEmpty()) return OpenFind();
  const bool pastHit = direction == FindDirection::kForward && !selection_.IsEmpty();
  Find(direction, pastHit ? selection_.Range().end : FindStart());
}

// The last hit or other selection, else what is in sight.
LogPosition ChatTextView::FindStart() {
  return selection_.IsEmpty() ? scroll_.PositionOf(top_) : selection_.Range().begin;
}

void ChatTextView::Find(FindDirection direction, LogPosition from) {
  const std::string text = findBar_->Text().toStdString();
  const auto hit = FindInLog(log_, text, from, direction);
  findBar_->ShowFound(hit || text.empty());
  if (!hit) return;
  Select(*hit);
  Settle();
  // With what was said around it, unless it is in sight already.
  const Place place = scroll_.PlaceOf(hit->begin);
  const int height = viewport()->height();
  const bool visible =
      place >= top_ && scroll_.Distance(top_, place, height) + layout_.RowHeight() <= height;
  if (!visible) SetTop(scroll_.Moved(place, -height / 2));
}

}  // namespace brindle
