#pragma once
// The "Load List" menu: fills the mail list from a file, shows that it is busy meanwhile, and puts
// the server's handle where requests take it from.

#include <string>

#include "base/clock.h"
#include "base/dialogs.h"
#include "mail/list_view.h"
#include "mail/mail_list.h"

namespace brindle {

class ListLoader {
 public:
  // All four are not owned and must outlive the loader.
  ListLoader(Dialogs& dialogs, EventPump& events, ListView& view, MailList& list)
      : dialogs_(dialogs), events_(events), view_(view), list_(list) {}

  // Asks for a file and loads it. Faults of the file are passed over: the list then holds what
  // could be read. Window events run meanwhile; the list stays empty until it is complete, and what
  // has replaced it in the meantime wins.
  void mnuLoadListFile_Click();

  // Empties the list and nothing else; the header goes on showing the old total.
  void mnuLoadListWeb_Click() { list_.ClearBelowHeader(); }

  // Ends a load that is running, as soon as it next lets window events run: for closing the window.
  void Stop() { stopped_ = true; }

 private:
  void Load(const std::string& path);

  Dialogs& dialogs_;
  EventPump& events_;
  ListView& view_;
  MailList& list_;
  bool stopped_ = false;
};

}  // namespace brindle
