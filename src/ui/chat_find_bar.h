#pragma once
// The strip under a chat view in which the user types what to look for.

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include "irc/chat_log_find.h"

namespace brindle {

class ChatFindBar : public QWidget {
  Q_OBJECT

 public:
  explicit ChatFindBar(QWidget* parent);

  QString Text() const { return edit_->text(); }
  // Puts the keyboard into the field with its text selected.
  void Activate();
  void ShowFound(bool found);

 signals:
  // The text has changed: look for it from where the last hit begins.
  void TextEdited();
  void FindAgain(FindDirection direction);
  void Closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLineEdit* edit_;
  QLabel* message_;
};

}  // namespace brindle
