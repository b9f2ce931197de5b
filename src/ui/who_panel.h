#pragma once
// The who's-here list and its count.

#include <QWidget>
#include <memory>

#include "irc/who_list.h"

namespace Ui {
class WhoPanel;
}

namespace brindle {

class WhoPanel : public QWidget {
  Q_OBJECT

 public:
  explicit WhoPanel(QWidget* parent = nullptr);
  ~WhoPanel() override;

  void Attach(WhoList& who);

 private:
  std::unique_ptr<Ui::WhoPanel> ui_;
};

}  // namespace brindle
