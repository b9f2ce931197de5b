#pragma once
// The search window's rule: finds mails of the loaded list by a piece of their title, keeps the
// matches in a list of their own, and sends checks back to the main list. When that list is
// replaced, it is searched again at once, so the matches are always its own.

#include <string>

#include "base/clock.h"
#include "base/dialogs.h"
#include "mail/mail_list.h"
#include "mail/row_set.h"
#include "settings/finds.h"
#include "settings/settings_file.h"

namespace brindle {

// Sizes of the search window, in twips (fifteen to a pixel). A column of 0 keeps its own width.
struct ResultsGeometry {
  int height = 6240;
  int width = 7695;
  int column1 = 0;
  int column2 = 0;
};

class ResultsView {
 public:
  virtual ~ResultsView() = default;
  // The text in cmbSearch.
  virtual void SetSearchText(const std::string& text) = 0;
  // The caption of fmeSearch.
  virtual void SetSearchCaption(const std::string& text) = 0;
  // cmbSearch and cmdSearch; cmdAll and cmdSelected.
  virtual void EnableSearch(bool enabled) = 0;
  virtual void EnableSending(bool enabled) = 0;
  // lblSearchedThrough, lblSearchMatches and lblSearchTime (milliseconds).
  virtual void SetCounts(size_t searched, size_t matches, TickCount milliseconds) = 0;
  virtual void FocusSearch() = 0;
};

class Results : private MailListObserver {
 public:
  // `main` is the loaded list.
  Results(MailList& main, Finds& finds, SettingsFile& settings, Dialogs& dialogs,
          const Clock& clock, EventPump& events);
  ~Results() override;
  Results(const Results&) = delete;
  Results& operator=(const Results&) = delete;

  // False, after telling the user, when there is no list to search.
  bool cmdFind_Click();

  // The window has opened. Returns the sizes to take.
  ResultsGeometry Form_Load(ResultsView& view);

  void cmdSearch_Click(const std::string& text);
  // Checks the checked, or all, results in the main list: a result of number n checks row n there,
  // whatever the number of that row.
  void cmdSelected_Click();
  void cmdAll_Click();
  // True when the window may close: asks first when checks would be left behind. Then saves.
  bool cmdReturn_Click(const ResultsGeometry& geometry);

  // Saves without asking: the program ends.
  void Save(const ResultsGeometry& geometry);

  // The window goes away, and with it the results, which would hold on to the searched list's
  // texts.
  void Form_Unload();

  MailList& Found() { return found_; }
  const ObservedList<Find>& RememberedSearches() const { return finds_.Items(); }

 private:
  void RowsReplaced() override;
  // Looks for `searched_` in the main list.
  void Search();
  // Checks row n of the main list for each given result of number n.
  void SendRows(const RowSet& rows);
  bool HasUnsentChecks() const;

  MailList& main_;
  Finds& finds_;
  SettingsFile& settings_;
  Dialogs& dialogs_;
  const Clock& clock_;
  EventPump& events_;
  ResultsView* view_ = nullptr;
  MailList found_;
  RowSet sent_;           // of found_
  std::string searched_;  // what found_ holds; empty before the first search
  int turn_ = 0;          // counts searches and windows: who waits sees that something came between
};

}  // namespace brindle
