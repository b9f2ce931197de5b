#pragma once
// A view of coloured chat text that grows at its end. It follows the end only while the user is
// there, and says when a mouse selection begins and ends, so that no text arrives under it.

#include <QPlainTextEdit>

#include "irc/chat_display.h"

namespace brindle {

class ChatTextView : public QPlainTextEdit, public ChatView {
  Q_OBJECT

 public:
  explicit ChatTextView(QWidget* parent = nullptr);

  void Append(const std::vector<ColouredRun>& runs) override;
  size_t TextLength() const override { return textLength_; }

 signals:
  // True from the press of the left mouse button to its release.
  void Selecting(bool active);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void SetSelecting(bool active);

  size_t textLength_ = 0;
  bool selecting_ = false;
};

}  // namespace brindle
