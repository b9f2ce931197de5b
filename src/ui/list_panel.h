#pragma once
// The list tab: the mail list with its buttons and menus, and where requests go to.

#include <QMenu>
#include <QWidget>
#include <memory>
#include <optional>

#include "mail/list_loader.h"
#include "mail/list_selection.h"
#include "mail/list_view.h"
#include "mail/requests.h"

namespace Ui {
class ListPanel;
}

namespace brindle {

class ListPanel : public QWidget, public ListView {
  Q_OBJECT

 public:
  explicit ListPanel(QWidget* parent = nullptr);
  ~ListPanel() override;

  void Attach(MailList& list, ListLoader& loader, ListSelection& selection, Requests& requests);

  // Pops the Select menu up under `button`, for the list of search results.
  void PopUpSelectFor(const SelectTarget& results, const QWidget& button);

  void SetColours(Colour text, Colour background);

  QString ScreenName() const;
  void SetScreenName(const QString& name);

  void SetTitleHeader(const std::string& text) override;
  void EnableListButtons(bool enabled) override;
  void ShowList(bool shown) override;
  void SetListServer(const std::string& handle) override;

 signals:
  // The user typed in the screen name box.
  void ScreenNameEdited(const QString& name);
  void FindClicked();
  void ManualRequestClicked();
  // Something to tell the user without interrupting.
  void Hint(const QString& text);

 private:
  void BuildMenus(ListLoader& loader, ListSelection& selection);
  // The list that the Select menu works on: the results while "All" is offered.
  SelectTarget Target();
  void ShiftClick(Qt::KeyboardModifiers modifiers);

  std::unique_ptr<Ui::ListPanel> ui_;
  QMenu mnuLoadList_;
  QMenu mnuSelect_;
  QAction* mnuSelectAll_ = nullptr;
  MailList* list_ = nullptr;
  ListSelection* selection_ = nullptr;
  std::optional<SelectTarget> results_;
};

}  // namespace brindle
