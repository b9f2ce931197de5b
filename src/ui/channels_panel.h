#pragma once
// The channels panel: the user's rooms, with buttons to add, remove and enter one.

#include <QWidget>
#include <memory>
#include <optional>

#include "irc/channels.h"

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

 private:
  std::optional<size_t> Selected() const;

  std::unique_ptr<Ui::ChannelsPanel> ui_;
};

}  // namespace brindle
