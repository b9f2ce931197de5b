#include "ui/chat_find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

namespace brindle {
namespace {

constexpr int kMargin = 3;

}  // namespace

ChatFindBar::ChatFindBar(QWidget* parent)
    : QWidget(parent), edit_(new QLineEdit(this)), message_(new QLabel(this)) {
  setAutoFillBackground(true);
  setCursor(Qt::ArrowCursor);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  const auto addButton = [&](const char* name, Qt::ArrowType arrow, const char* text,
                             const auto& action) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setText(text);
    button->setAutoRaise(true);
    button->setToolTip(text);
    button->setAccessibleName(text);
    connect(button, &QToolButton::clicked, this, action);
    layout->addWidget(button);
  };
  edit_->setObjectName("chatFindText");
  edit_->setPlaceholderText("Find in chat");
  edit_->setAccessibleName("Find in chat");
  layout->addWidget(edit_, 1);
  addButton("chatFindPrevious", Qt::UpArrow, "Previous (Shift+F3)",
            [this] { emit FindAgain(FindDirection::kBackward); });
  addButton("chatFindNext", Qt::DownArrow, "Next (F3)",
            [this] { emit FindAgain(FindDirection::kForward); });
  layout->addWidget(message_);
  addButton("chatFindClose", Qt::NoArrow, "Close", [this] { emit Closed(); });
  connect(edit_, &QLineEdit::textEdited, this, &ChatFindBar::TextEdited);
}

void ChatFindBar::Activate() {
  edit_->setFocus(Qt::ShortcutFocusReason);
  edit_->selectAll();
}

void ChatFindBar::ShowFound(bool found) { message_->setText(found ? "" : "Not found"); }

void ChatFindBar::keyPressEvent(QKeyEvent* event) {
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  switch (event->key()) {
    case Qt::Key_Escape:
      emit Closed();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F3:
      emit FindAgain(shift ? FindDirection::kBackward : FindDirection::kForward);
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace brindle
