#pragma once
// The "Load List" menu: fills the mail list from a file, shows that it is busy meanwhile, and puts
// the server's handle where requests take it from. What was there before comes back, if the user
// wants that, when the file gave no list.

#include <string>
#include <vector>

#include "base/clock.h"
#include "base/dialogs.h"
#include "mail/list_view.h"
#include "mail/mail_list.h"
#include "settings/recent_lists.h"

namespace brindle {

class ListLoader {
 public:
  // All four are not owned and must outlive the loader.
  ListLoader(Dialogs& dialogs, EventPump& events, ListView& view, MailList& list)
      : dialogs_(dialogs), events_(events), view_(view), list_(list) {}

  // Keeps what is loaded from now on in `recent`, which must outlive the loader.
  void Remember(RecentLists& recent) { recent_ = &recent; }
  // The files loaded last; see RecentLists.
  std::vector<std::string> Recent() const {
    return recent_ == nullptr ? std::vector<std::string>() : recent_->Paths();
  }

  // Asks for a file and loads it. Faults of the file are told by a note: the list then holds what
  // could be read. Window events run meanwhile; the list stays empty until it is complete, and what
  // has replaced it in the meantime wins.
  void mnuLoadListFile_Click();

  // The same without asking. A file that is not there leaves the list alone.
  void OpenFile(const std::string& path);

  // Empties the list and nothing else; the header goes on showing the old total.
  void mnuLoadListWeb_Click();

  // Brings back the list, with its checks, that a file without a list or From Web has taken away.
  // Possible until another list is loaded.
  void Undo();

  // Ends a load that is running, as soon as it next lets window events run: for closing the window.
  void Stop() { stopped_ = true; }

 private:
  void LoadBusy(const std::string& path);
  void Load(const std::string& path);
  // Keeps the list for Undo, where there is one.
  void KeepForUndo();
  void Tell(const std::string& text);

  Dialogs& dialogs_;
  EventPump& events_;
  ListView& view_;
  MailList& list_;
  RecentLists* recent_ = nullptr;
  MailList before_;  // for Undo
  std::string serverBefore_;
  bool stopped_ = false;
};

}  // namespace brindle
