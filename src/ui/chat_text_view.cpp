#include "ui/chat_text_view.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QTextCursor>

#include "base/text.h"
#include "ui/qt_text.h"

namespace brindle {

ChatTextView::ChatTextView(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setUndoRedoEnabled(false);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setTabChangesFocus(true);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void ChatTextView::Append(const std::vector<ColouredRun>& runs) {
  QScrollBar* bar = verticalScrollBar();
  const bool following = bar->value() == bar->maximum();

  // Text inserted where the user's own cursor or selection ends would drag it along.
  QTextCursor own = textCursor();
  const int anchor = own.anchor();
  const int position = own.position();

  QTextCursor end(document());
  end.movePosition(QTextCursor::End);
  end.beginEditBlock();
  for (const ColouredRun& run : runs) {
    QTextCharFormat format;
    format.setForeground(ToQColor(run.colour));
    end.insertText(ToQString(run.text).replace(QLatin1String("\r\n"), QLatin1String("\n")), format);
    textLength_ += CharacterCount(run.text);
  }
  end.endEditBlock();
  if (own.anchor() != anchor || own.position() != position) {
    const int scrolled = bar->value();
    own.setPosition(anchor);
    own.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(own);
    bar->setValue(scrolled);
  }
  if (following) bar->setValue(bar->maximum());
}

void ChatTextView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) SetSelecting(true);
  QPlainTextEdit::mousePressEvent(event);
}

void ChatTextView::mouseReleaseEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) SetSelecting(false);
}

void ChatTextView::focusOutEvent(QFocusEvent* event) {
  // The release may go to another window; the chat must not stand still for it.
  SetSelecting(false);
  QPlainTextEdit::focusOutEvent(event);
}

void ChatTextView::hideEvent(QHideEvent* event) {
  SetSelecting(false);
  QPlainTextEdit::hideEvent(event);
}

void ChatTextView::SetSelecting(bool active) {
  if (selecting_ == active) return;
  selecting_ = active;
  emit Selecting(active);
}

}  // namespace brindle
