#pragma once
// The search window's rule: finds mails of the loaded list by a piece of their title, keeps the
// matches in a list of their own, sends checks back to the main list, and remembers the searches.

#include <string>
#include <vector>

#include "base/clock.h"
#include "base/dialogs.h"
#include "base/observed_list.h"
#include "mail/list_view.h"
#include "mail/mail_list.h"
#include "settings/stored_lists.h"

namespace brindle {

// Sizes of the search window, in twips (fifteen to a pixel). A column of 0 keeps its own width.
struct ResultsGeometry {
  int height = 6240;
  int width = 7695;
  int column1 = 0;
  int column2 = 0;
};

// Where searches and sizes are kept between runs.
class ResultsStore {
 public:
  virtual ~ResultsStore() = default;
  virtual std::string LastSearch() = 0;
  virtual void SetLastSearch(const std::string& text) = 0;
  // The remembered searches without those that the user wants dropped.
  virtual std::vector<Find> Finds() = 0;
  virtual void SetFinds(const std::vector<Find>& finds) = 0;
  virtual ResultsGeometry Geometry() = 0;
  virtual void SetGeometry(const ResultsGeometry& geometry) = 0;
  virtual DayNumber Today() = 0;
};

class ResultsView : public TitledView {
 public:
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

class Results {
 public:
  // `main` is the loaded list and `mainView` its header.
  Results(MailList& main, TitledView& mainView, ResultsStore& store, Dialogs& dialogs,
          const Clock& clock, EventPump& events)
      : main_(main),
        mainView_(mainView),
        store_(store),
        dialogs_(dialogs),
        clock_(clock),
        events_(events) {}

  // False, after telling the user, when there is no list to search.
  bool cmdFind_Click();

  // The window has opened: shows the remembered searches. Returns the sizes to take.
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
  void Form_Unload() {
    view_ = nullptr;
    found_.Clear();
  }

  MailList& Found() { return found_; }
  // The remembered searches, the latest at the end.
  const ObservedList<Find>& Finds() const { return finds_; }

 private:
  void Remember(const std::string& text);
  void Fill(const std::string& text);
  // Checks row n of the main list for each given result of number n.
  void SendRows(const std::vector<size_t>& rows);

  MailList& main_;
  TitledView& mainView_;
  ResultsStore& store_;
  Dialogs& dialogs_;
  const Clock& clock_;
  EventPump& events_;
  ResultsView* view_ = nullptr;
  MailList found_;
  ObservedList<Find> finds_;
};

}  // namespace brindle
