#include "ui/chat_text_view.h"

#include <QAccessible>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>

#include "ui/chat_accessible.h"
#include "ui/chat_find_bar.h"
#include "ui/look.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

constexpr int kSideMargin = kInset;
constexpr int kFirstWidth = 600;  // until the view has a size
constexpr size_t kBlocksKept = 16;

Place Without(size_t lines, Place place) {
  if (place.segment.line < lines) return {};
  place.segment.line -= lines;
  return place;
}

}  // namespace

ChatTextView::ChatTextView(QWidget* parent)
    : QAbstractScrollArea(parent), findBar_(new ChatFindBar(this)), pill_(new QPushButton(this)) {
  InstallChatAccessibility();
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setCursor(Qt::IBeamCursor);
  viewport()->setMouseTracking(true);
  // Every pixel is painted, so what is on screen may be moved when scrolling.
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  layout_.SetFont(font());
  ChangePaper();
  layout_.SetWidth(kFirstWidth);
  findBar_->hide();
  pill_->setObjectName("cmdNewLines");
  pill_->setFocusPolicy(Qt::NoFocus);  // Ctrl+End does the same
  pill_->setDefault(true);
  pill_->hide();
  connect(pill_, &QPushButton::clicked, this, [this] { SetTop(end_); });
  connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, &ChatTextView::OnBarAction);
  connect(findBar_, &ChatFindBar::Closed, this, &ChatTextView::CloseFind);
  connect(findBar_, &ChatFindBar::FindAgain, this, &ChatTextView::FindAgain);
  connect(findBar_, &ChatFindBar::TextEdited, this,
          [this] { Find(FindDirection::kForward, FindStart()); });
}

void ChatTextView::Append(const std::vector<ColouredRun>& runs) {
  const LogPosition before = log_.End();
  log_.Append(runs);
  if (!firstUnsettled_) firstUnsettled_ = before.line;
  if (!settlePosted_ && isVisible()) {
    settlePosted_ = true;
    QMetaObject::invokeMethod(this, &ChatTextView::Settle, Qt::QueuedConnection);
  }
  if (QAccessible::isActive()) NotifyAppended(*this, before);
  if (log_.LineCount() > mostLines_) DropOldest();
  emit Grew();
}

void ChatTextView::KeepAtMost(size_t lines) {
  mostLines_ = std::max<size_t>(lines, 1);
  if (log_.LineCount() > mostLines_) DropOldest();
}

// In blocks, so that the work is spread over many lines.
void ChatTextView::DropOldest() {
  const size_t lines = log_.LineCount() - mostLines_ + mostLines_ / kBlocksKept;
  if (topText_) topText_ = Without(lines, *topText_);
  const QString gone = QAccessible::isActive() ? TextOf({{}, {lines, 0}}) : QString();
  log_.DropOldest(lines);
  layout_.Forget();
  selection_.Shift(lines);
  top_ = Without(lines, top_);
  end_ = Without(lines, end_);
  for (std::optional<size_t>* line : {&firstUnsettled_, &firstUnread_}) {
    if (*line) *line = **line - std::min(**line, lines);
  }
  seenLines_ -= std::min(seenLines_, lines);
  if (!gone.isEmpty()) NotifyRemoved(*this, gone);
  if (!isVisible()) return;  // showEvent() comes back here
  Settle();
  viewport()->update();
}

void ChatTextView::SetBackColour(std::optional<Colour> colour) {
  hasOwnBack_ = colour.has_value();
  QPalette changed;
  if (colour) changed.setColor(QPalette::Base, ToQColor(*colour));
  setPalette(changed);
  ChangePaper();
}

void ChatTextView::SetInk(ChatInk ink) {
  ink_ = ink;
  ChangePaper();
}

void ChatTextView::ChangePaper() {
  const Colour text = hasOwnBack_ ? kBlack : FromQColor(palette().color(QPalette::Text));
  layout_.SetPaper({FromQColor(palette().color(QPalette::Base)), text, ink_});
  viewport()->update();
}

QString ChatTextView::PlainText() const { return ToQString(log_.PlainText(log_.Everything())); }

void ChatTextView::Settle() {
  settlePosted_ = false;
  if (!isVisible()) return;  // showEvent() comes back here
  const Place before = top_;
  end_ = scroll_.End(viewport()->height());
  if (following_ || top_ >= end_) {
    top_ = end_;
    following_ = true;
  }
  ShiftScreen(before);
  if (firstUnsettled_) UpdateLines(*firstUnsettled_, log_.LineCount() - 1);
  firstUnsettled_.reset();
  UpdateBar();  // may change the viewport's width, and so come back here
}

template <typename Change>
void ChatTextView::LayOutAgain(Change change) {
  if (!following_ && !topText_) topText_ = scroll_.PositionOf(top_);
  const int partOfRow = top_.y % layout_.RowHeight();
  change();
  if (!following_) {
    top_ = scroll_.PlaceOf(*topText_);
    top_.y += std::min(partOfRow, layout_.RowHeight() - 1);
  }
  Settle();
  viewport()->update();
}

void ChatTextView::resizeEvent(QResizeEvent*) {
  PlaceFindBar();
  LayOutAgain([this] { layout_.SetWidth(std::max(1, viewport()->width() - 2 * kSideMargin)); });
}

void ChatTextView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange) {
    LayOutAgain([this] { layout_.SetFont(font()); });
  } else if (event->type() == QEvent::PaletteChange) {
    ChangePaper();
  }
}

void ChatTextView::showEvent(QShowEvent* event) {
  QAbstractScrollArea::showEvent(event);
  if (firstUnread_ == log_.LineCount()) firstUnread_.reset();
  Settle();
  viewport()->update();
}

template <typename Use>
void ChatTextView::ForEachVisible(Use use) {
  Segment segment = top_.segment;
  int y = -top_.y;
  while (y < viewport()->height()) {
    if (!use(segment, y)) return;
    y += layout_.Height(segment);
    if (!layout_.ToNext(segment)) return;
  }
}

void ChatTextView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  const QRect dirty = event->rect();
  painter.fillRect(dirty, palette().brush(QPalette::Base));
  ForEachVisible([&](Segment segment, int y) {
    if (y > dirty.bottom()) return false;
    const int height = layout_.Height(segment);
    if (height > 0 && y + height > dirty.top()) {
      layout_.Draw(painter, segment, {kSideMargin, y}, selection_.Range(), palette());
      DrawUnreadMark(painter, segment, y);
    }
    return true;
  });
}

void ChatTextView::DrawUnreadMark(QPainter& painter, Segment segment, int y) const {
  if (firstUnread_ != segment.line || segment.index > 0) return;
  painter.fillRect(kSideMargin, y, viewport()->width() - 2 * kSideMargin, 1,
                   CurrentColours().accent);
}

void ChatTextView::UpdatePill() {
  if (following_) seenLines_ = log_.LineCount();
  const size_t more = log_.LineCount() - seenLines_;
  pill_->setVisible(more > 0);
  if (more == 0) return;
  pill_->setText(more == 1 ? QString("1 new line") : QString("%1 new lines").arg(more));
  pill_->adjustSize();
  const QRect view = viewport()->geometry();
  pill_->move(view.right() - pill_->width() - kInset, view.bottom() - pill_->height() - kInset);
}

void ChatTextView::UpdateLines(size_t first, size_t last) {
  const int height = viewport()->height();
  int from = height;
  int to = height;
  ForEachVisible([&](Segment segment, int y) {
    if (segment.line >= first) from = std::min(from, y);
    to = segment.line > last ? y : height;
    return segment.line <= last;
  });
  if (from < to) viewport()->update(0, from, viewport()->width(), to - from);
}

void ChatTextView::ShiftScreen(Place before) {
  if (before == top_) return;
  const int height = viewport()->height();
  const int distance = before < top_ ? -scroll_.Distance(before, top_, height)
                                     : scroll_.Distance(top_, before, height);
  if (std::abs(distance) < height) {
    viewport()->scroll(0, distance);
  } else {
    viewport()->update();
  }
}

void ChatTextView::SetTop(Place place) {
  const Place before = top_;
  top_ = std::min(place, end_);
  following_ = top_ == end_;
  topText_.reset();
  ShiftScreen(before);
  UpdateBar();
}

void ChatTextView::ScrollBy(int pixels) { SetTop(scroll_.Moved(top_, pixels)); }

// One row of the old page stays in sight.
int ChatTextView::PageHeight() const {
  const int row = layout_.RowHeight();
  return std::max(row, (viewport()->height() / row - 1) * row);
}

// The greatest value means the end and nothing else: the last line may have more rows than the
// view.
void ChatTextView::UpdateBar() {
  const int units = scroll_.UnitsPerLine();
  const Place start = scroll_.Moved({}, 0);
  const int first = scroll_.Value(start);
  const int maximum = start == end_ ? 0 : scroll_.Value(end_) - first + 1;
  const int all = static_cast<int>(log_.LineCount()) * units - first;
  const int value = top_ == end_ ? maximum : std::min(scroll_.Value(top_) - first, maximum - 1);
  QScrollBar* bar = verticalScrollBar();
  updatingBar_ = true;
  bar->setPageStep(std::max(units, all - maximum));
  bar->setSingleStep(units);
  bar->setRange(0, maximum);
  if (!updatingBar_)
    return;  // the bar has appeared or gone, and the change of width came here again
  bar->setValue(value);
  updatingBar_ = false;
  UpdatePill();
}

void ChatTextView::scrollContentsBy(int, int) {
  if (updatingBar_) return;
  const QScrollBar* bar = verticalScrollBar();
  const int first = scroll_.Value(scroll_.Moved({}, 0));
  SetTop(bar->value() >= bar->maximum() ? end_ : scroll_.AtValue(first + bar->value()));
}

// The bar counts in lines; its arrows and its trough move by rows and pages.
void ChatTextView::OnBarAction(int action) {
  switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
      return ScrollBy(layout_.RowHeight());
    case QAbstractSlider::SliderSingleStepSub:
      return ScrollBy(-layout_.RowHeight());
    case QAbstractSlider::SliderPageStepAdd:
      return ScrollBy(PageHeight());
    case QAbstractSlider::SliderPageStepSub:
      return ScrollBy(-PageHeight());
    default:
      return;
  }
}

void ChatTextView::ShowPosition(LogPosition position) {
  Settle();
  const Place place = scroll_.PlaceOf(position);
  const int height = viewport()->height();
  const int row = layout_.RowHeight();
  if (place < top_) {
    SetTop(place);
  } else if (scroll_.Distance(top_, place, height) + row > height) {
    SetTop(scroll_.Moved(place, row - height));
  }
}

LogPosition ChatTextView::PositionAt(QPoint point) {
  LogPosition position = log_.End();
  ForEachVisible([&](Segment segment, int y) {
    const int height = layout_.Height(segment);
    if (height == 0 || point.y() >= y + height) return true;
    position = layout_.PositionAt(segment, {point.x() - kSideMargin, std::max(0, point.y() - y)});
    return false;
  });
  return position;
}

QRect ChatTextView::RectOf(LogPosition position) {
  QRect rect;
  const Segment wanted = layout_.SegmentAt(position);
  ForEachVisible([&](Segment segment, int y) {
    if (segment == wanted) rect = layout_.CharacterRect(position).translated(kSideMargin, y);
    return segment < wanted;
  });
  return rect;
}

}  // namespace brindle
