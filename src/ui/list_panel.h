#pragma once
// The list tab: the mail list with its buttons and menus, and where requests go to.

#include <QMenu>
#include <QWidget>
#include <memory>

#include "mail/list_loader.h"
#include "mail/list_selection.h"
#include "mail/list_view.h"
#include "mail/requests.h"

namespace Ui {
class ListPanel;
}

namespace brindle {

class MailListModel;

class ListPanel : public QWidget, public ListView {
  Q_OBJECT

 public:
  explicit ListPanel(QWidget* parent = nullptr);
  ~ListPanel() override;

  void Attach(MailList& list, ListLoader& loader, ListSelection& selection, Requests& requests);

  void SetScreenName(const QString& name);

  void SetTitleHeader(const std::string& text) override;
  void EnableListButtons(bool enabled) override;
  void ShowList(bool shown) override;
  void SetListServer(const std::string& handle) override;

 signals:
  // The user typed in the screen name box.
  void ScreenNameEdited(const QString& name);
  // Something to tell the user without interrupting.
  void Hint(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildMenus(ListLoader& loader, ListSelection& selection);
  SelectTarget Target();
  void ShiftClick(Qt::KeyboardModifiers modifiers);
  // Space toggles the checks of all highlighted rows, by the state of the current one.
  void ToggleHighlighted();
  std::vector<RowRange> HighlightedRows() const;

  std::unique_ptr<Ui::ListPanel> ui_;
  QMenu mnuLoadList_;
  QMenu mnuSelect_;
  MailList* list_ = nullptr;
  ListSelection* selection_ = nullptr;
  MailListModel* model_ = nullptr;
};

}  // namespace brindle
