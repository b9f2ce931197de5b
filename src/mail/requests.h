#pragma once
// "Request Selected": asks the server for every checked mail, one line for each mail or run of
// neighbouring mails, with a pause after each so that the IRC server does not take it for a flood.

#include <string>

#include "app/options.h"
#include "base/clock.h"
#include "base/dialogs.h"
#include "irc/connection.h"
#include "irc/output_queue.h"
#include "irc/session.h"
#include "mail/mail_list.h"

namespace brindle {

class RequestsView {
 public:
  virtual ~RequestsView() = default;
  // A word on how the requests go, where it interrupts nobody.
  virtual void ShowHint(const std::string& text) = 0;
};

class Requests {
 public:
  static constexpr int kPauseMilliseconds = 200;

  Requests(MailList& list, const Session& session, Connection& connection, OutputQueue& queue,
           const Options& options, RequestsView& view, Dialogs& dialogs, const Clock& clock,
           EventPump& events)
      : list_(list),
        session_(session),
        connection_(connection),
        queue_(queue),
        options_(options),
        view_(view),
        dialogs_(dialogs),
        clock_(clock),
        events_(events) {}

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
  void Send(const std::string& text);

  MailList& list_;
  const Session& session_;
  Connection& connection_;
  OutputQueue& queue_;
  const Options& options_;
  RequestsView& view_;
  Dialogs& dialogs_;
  const Clock& clock_;
  EventPump& events_;
  bool stopped_ = false;
};

}  // namespace brindle
