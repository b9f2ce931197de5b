#pragma once
// "Request Selected": asks the server for every checked mail, one line for each mail or run of
// neighbouring mails, with a pause after each.

#include <string>

#include "base/dialogs.h"
#include "mail/mail_list.h"
#include "mail/request_sender.h"
#include "settings/options.h"

namespace brindle {

class RequestsView {
 public:
  virtual ~RequestsView() = default;
  // A word on how the requests go, where it interrupts nobody.
  virtual void ShowHint(const std::string& text) = 0;
};

class Requests {
 public:
  Requests(MailList& list, RequestSender& sender, const Options& options, RequestsView& view,
           Dialogs& dialogs)
      : list_(list), sender_(sender), options_(options), view_(view), dialogs_(dialogs) {}

  // Returns when all is requested, the session or the room is left, the list is replaced, or Stop
  // was called; rows not reached keep their checks. Window events run during the pauses, so a
  // second click may start a second pass in the middle of the first; both run to their end. The
  // title header is not refreshed.
  void cmdRequest_Click(const std::string& screenName, const std::string& handle);

  // Ends every pass that is running: for closing the window.
  void Stop() { stopped_ = true; }

 private:
  // Sends every request; returns how many lines went out.
  int RequestChecked(const std::string& screenName, const std::string& handle);

  MailList& list_;
  RequestSender& sender_;
  const Options& options_;
  RequestsView& view_;
  Dialogs& dialogs_;
  bool stopped_ = false;
};

}  // namespace brindle
