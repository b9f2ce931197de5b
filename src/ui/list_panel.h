#pragma once
// The list tab: the mail list with its buttons and menus, and where requests go to.

#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QWidget>
#include <memory>
#include <optional>

#include "base/colour.h"
#include "mail/list_loader.h"
#include "mail/list_selection.h"
#include "mail/list_view.h"
#include "mail/requests.h"
#include "ui/select_menu.h"

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

  // Serves the list of search results too.
  SelectMenu& Select() { return mnuSelect_; }

  // Colours of rows, where they are not the theme's.
  void SetColours(std::optional<Colour> text, std::optional<Colour> background);

  // As by the menu item From File, and without asking.
  void LoadFromFile();
  void Find();
  bool HasRows() const { return list_ != nullptr && list_->Size() > 0; }
  bool HasChecks() const { return list_ != nullptr && list_->CheckedCount() > 0; }
  // False when there is no run.
  bool StopRun();
  void OpenFile(const QString& path);
  void FocusFilter();

  QSize minimumSizeHint() const override;

  QString ScreenName() const;
  void SetScreenName(const QString& name);

  // How the run of requests goes; nothing when none goes.
  void ShowRun(const std::optional<RunProgress>& progress);

  void EnableListButtons(bool enabled) override;
  void ShowList(bool shown) override;
  void SetListServer(const std::string& handle) override;
  std::string ListServer() const override;
  void ShowNote(const ListNote& note) override;

 signals:
  // The user typed in the screen name box.
  void ScreenNameEdited(const QString& name);
  void FindClicked();
  void ManualRequestClicked();
  void StopClicked();
  // Something to tell the user without interrupting.
  void Hint(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildFilter();
  void BuildMenus(ListLoader& loader, ListSelection& selection);
  // Puts the lists that were loaded last into the menu.
  void ShowRecent();
  // The line above the list that says what went wrong, with Undo.
  void BuildNote();
  // What stands in place of the rows, and whether there is a header above.
  void ShowEmptyState();
  void ShiftClick(Qt::KeyboardModifiers modifiers);
  // The menu of the highlighted rows, or of the current one.
  void ShowRowMenu(const QPoint& place, Requests& requests);
  // Puts buttons and fields into one row each where there is room, else into two.
  void FitRows();
  // What stands beside the buttons: how the run goes, else how many rows are checked.
  void RefreshRunLabel();
  // Another list is there: the filter was meant for the one before.
  void RowsReset();

  std::unique_ptr<Ui::ListPanel> ui_;
  QMenu mnuLoadList_;
  SelectMenu mnuSelect_;
  QMenu* mnuRows_ = nullptr;    // made when first shown
  QList<QAction*> recent_;      // of mnuLoadList_
  QWidget* barNote_ = nullptr;  // made when first shown
  QLabel* lblNote_ = nullptr;
  QString note_;
  MailList* list_ = nullptr;
  ListLoader* loader_ = nullptr;
  ListSelection* selection_ = nullptr;
  std::uint64_t generation_ = 0;  // of the rows that the filter was typed for
  std::optional<RunProgress> run_;
  QElapsedTimer sinceRunBegan_;
};

}  // namespace brindle
