#pragma once
// The line for typing and its button: the history by the arrow keys, pages of the chat by the page
// keys, nicks completed by Tab.

#include <QComboBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QWidget>

#include "irc/nick_words.h"
#include "irc/outgoing_text.h"
#include "irc/who_list.h"
#include "ui/list_combo_box.h"

namespace brindle {

class SendBar : public QWidget {
  Q_OBJECT

 public:
  explicit SendBar(QWidget* parent = nullptr);

  // Nicks are completed from `who`. Both must live longer than this.
  void Attach(OutgoingText& outgoing, const WhoList& who);

  void SetText(const std::string& text);
  // Says what the line is for while it is empty.
  void SetPurpose(const QString& text);
  void TakeFocus();
  // Puts `text` in, behind what is there, for the user to go on.
  void Begin(const QString& text);
  // A key pressed elsewhere that is meant for this line.
  void TakeKey(QKeyEvent& key);

 signals:
  void Sent(const QString& text);
  void ScrollKey(int key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // True when the key belongs to the history.
  bool WalkHistory(int key);
  void CompleteNick();

  ListComboBox* cmbSend_;
  QPushButton* cmdSend_;
  OutgoingText* outgoing_ = nullptr;
  const WhoList* who_ = nullptr;
  NickCompletion completion_;
};

}  // namespace brindle
