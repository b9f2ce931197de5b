#pragma once
// The line above the room view: the room, its topic, and the way to search what was said.

#include <QPushButton>
#include <QWidget>

#include "irc/session.h"
#include "settings/options.h"
#include "ui/elided_label.h"

namespace brindle {

class RoomHeader : public QWidget {
  Q_OBJECT

 public:
  explicit RoomHeader(QWidget* parent = nullptr);

  void ShowSession(const Session& session);

 signals:
  void FindClicked();

 private:
  QLabel* room_;
  ElidedLabel* topic_;
};

}  // namespace brindle
