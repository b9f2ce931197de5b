#include "ui/send_bar.h"

#include <QHBoxLayout>
#include <QLineEdit>

#include "ui/icons.h"
#include "ui/qt_text.h"

namespace brindle {

SendBar::SendBar(QWidget* parent)
    : QWidget(parent), cmbSend_(new ListComboBox(this)), cmdSend_(new QPushButton("&Send", this)) {
  cmbSend_->setObjectName("cmbSend");
  cmbSend_->setAccessibleName("Line to send");
  cmdSend_->setObjectName("cmdSend");
  cmdSend_->setAutoDefault(true);
  cmdSend_->setIcon(MakeIcon(IconName::kSend));
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(kGap, kGap, kGap, kGap);
  layout->addWidget(cmbSend_, 1);
  layout->addWidget(cmdSend_);
  setFocusProxy(cmbSend_);
}

void SendBar::Attach(OutgoingText& outgoing, const WhoList& who) {
  outgoing_ = &outgoing;
  who_ = &who;
  cmbSend_->Attach(outgoing.History());
  // What is said may have colours, and what is pasted several lines.
  cmbSend_->lineEdit()->setValidator(nullptr);
  cmbSend_->installEventFilter(this);
  connect(cmdSend_, &QPushButton::clicked, this, [this] {
    emit Sent(cmbSend_->currentText());
    TakeFocus();
  });
  connect(cmbSend_->lineEdit(), &QLineEdit::returnPressed, cmdSend_, &QPushButton::click);
}

void SendBar::SetText(const std::string& text) { cmbSend_->setEditText(ToQString(text)); }

void SendBar::SetPurpose(const QString& text) { cmbSend_->lineEdit()->setPlaceholderText(text); }

void SendBar::TakeFocus() { cmbSend_->setFocus(); }

void SendBar::Begin(const QString& text) {
  TakeFocus();
  cmbSend_->lineEdit()->end(false);
  cmbSend_->lineEdit()->insert(text);
}

void SendBar::TakeKey(QKeyEvent& key) {
  TakeFocus();
  QCoreApplication::sendEvent(cmbSend_, &key);
}

bool SendBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched != cmbSend_ || event->type() != QEvent::KeyPress) {
    return QWidget::eventFilter(watched, event);
  }
  const auto* key = static_cast<QKeyEvent*>(event);
  // With Alt, the keys open the list; with Control they change the tab.
  if (key->modifiers() & (Qt::AltModifier | Qt::ControlModifier)) return false;
  switch (key->key()) {
    case Qt::Key_Tab:
      // An empty line is left as by any other Tab; a begun one is not left by mistake.
      if (cmbSend_->currentText().isEmpty()) return false;
      CompleteNick();
      return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      emit ScrollKey(key->key());
      return true;
    default:
      return WalkHistory(key->key());
  }
}

bool SendBar::WalkHistory(int key) {
  if (key == Qt::Key_Up) {
    outgoing_->cmbSend_Up(cmbSend_->currentText().toStdString());
  } else if (key == Qt::Key_Down) {
    outgoing_->cmbSend_Down(cmbSend_->currentText().toStdString());
  }
  return key == Qt::Key_Up || key == Qt::Key_Down;
}

void SendBar::CompleteNick() {
  QLineEdit& line = *cmbSend_->lineEdit();
  const QString before = line.text().left(line.cursorPosition());
  const auto completed = completion_.Next(
      {line.text().toStdString(), before.toUtf8().toStdString().size()}, who_->Nicks().Items());
  if (!completed) return;
  line.setText(ToQString(completed->text));
  line.setCursorPosition(static_cast<int>(
      ToQString(std::string_view(completed->text).substr(0, completed->cursor)).size()));
}

}  // namespace brindle
