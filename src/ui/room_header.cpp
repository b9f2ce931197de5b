#include "ui/room_header.h"

#include <QHBoxLayout>

#include "irc/chat_colours.h"
#include "ui/icons.h"
#include "ui/look_paint.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

// A topic as one line without its colours.
QString PlainTopic(const std::string& topic) {
  std::string changed;
  QString plain;
  for (const ColouredRun& run : ColouredRuns(ShowableText(topic, changed), Options{})) {
    plain += ToQString(run.text);
  }
  return plain.simplified();
}

}  // namespace

RoomHeader::RoomHeader(QWidget* parent)
    : QWidget(parent), room_(new QLabel(this)), topic_(new ElidedLabel(this)) {
  room_->setObjectName("lblRoom");
  room_->setTextFormat(Qt::PlainText);
  room_->setFont(Medium(font()));
  topic_->setObjectName("lblTopic");
  topic_->setForegroundRole(kDimText);
  auto* find = new QPushButton(this);
  find->setObjectName("cmdRoomFind");
  find->setFlat(true);
  find->setIcon(MakeIcon(IconName::kFind));
  find->setAccessibleName("Find in the room");
  find->setToolTip("Find in the room (Ctrl+F)");
  find->setFocusPolicy(Qt::NoFocus);  // Ctrl+F does the same
  connect(find, &QPushButton::clicked, this, &RoomHeader::FindClicked);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(kInset, kSmallGap, kSmallGap, kSmallGap);
  layout->addWidget(room_);
  layout->addWidget(topic_, 1);
  layout->addWidget(find);
}

void RoomHeader::ShowSession(const Session& session) {
  const bool inRoom = !session.currentRoom.empty();
  room_->setText(inRoom ? ToQString(session.currentRoom) : QString("No room"));
  topic_->ShowText(inRoom ? PlainTopic(session.topic)
                          : QString("Enter one by a double-click under Channels."));
}

}  // namespace brindle
