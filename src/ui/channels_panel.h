#pragma once
// The channels panel: the user's rooms, with buttons to add, remove and enter one.

#include <QWidget>
#include <memory>
#include <optional>

#include "irc/channels.h"
#include "ui/icons.h"
#include "ui/observed_list_model.h"

namespace Ui {
class ChannelsPanel;
}

namespace brindle {

class ChannelsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit ChannelsPanel(QWidget* parent = nullptr);
  ~ChannelsPanel() override;

  void Attach(Channels& channels);

  // The room that the user is in stands out.
  void ShowSession(const Session& session);
  // Puts the keyboard into the list, on a room if there is one.
  void FocusList();

 private:
  std::optional<size_t> Selected() const;
  QVariant LookOf(std::string_view room, int role) const;
  void ShowMenu(QPoint at);

  std::unique_ptr<Ui::ChannelsPanel> ui_;
  ObservedListModel* model_ = nullptr;
  std::string currentRoom_;
  QIcon hereIcon_ = MakeIcon(IconName::kDot, LookRole::kGood);
  QIcon noIcon_;  // as wide, so that the names stand in one line
};

}  // namespace brindle
