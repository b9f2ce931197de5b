#pragma once
// The who's-here list and its count.

#include <QWidget>
#include <memory>

#include "irc/who_list.h"
#include "ui/icons.h"

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

 signals:
  // The user wants to talk to somebody, or to ask them for mails.
  void MessageWanted(const QString& nick);
  void ServerWanted(const QString& nick);

 private:
  // The selected nick without its marks; empty when there is none.
  QString Selected() const;
  QVariant LookOf(std::string_view entry, bool isAway, int role) const;
  void ShowMenu(QPoint at);
  void Message();

  std::unique_ptr<Ui::WhoPanel> ui_;
  QIcon person_ = MakeIcon(IconName::kPerson, LookRole::kDim);
  QIcon operator_ = MakeIcon(IconName::kPersonOperator, LookRole::kAccent);
  QIcon voice_ = MakeIcon(IconName::kPersonVoice, LookRole::kAccent);
};

}  // namespace brindle
