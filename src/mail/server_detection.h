#pragma once
// Notices mail servers that announce themselves in chat: a line with "!handle send" or
// "/notice handle send". A new server is added to the handles, the user is told, and when the
// option says so the server is asked for an access code.

#include <functional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "irc/connection.h"
#include "irc/line_pump.h"
#include "irc/output_queue.h"
#include "irc/session.h"
#include "mail/server_handles.h"
#include "settings/options.h"

namespace brindle {

// True when `text` announces a server.
bool IsServerAnnouncement(std::string_view text);

// The handle in the last announcement of `text`, in lower case; empty when there is none.
std::string ExtractServerHandle(std::string_view text);

// `handle` without blanks, bold and underline marks and "!", in lower case.
std::string CleanHandle(std::string_view handle);

class ServerDetection : public LineScanner {
 public:
  // `screenName` gives the text of txtInfoAOLSN at that moment.
  ServerDetection(const Session& session, Connection& connection, OutputQueue& queue,
                  const Options& options, ServerHandles& handles, const Clock& clock,
                  std::function<std::string()> screenName)
      : session_(session),
        connection_(connection),
        queue_(queue),
        options_(options),
        handles_(handles),
        clock_(clock),
        screenName_(std::move(screenName)) {}

  // Looks at a line before it is displayed. Sends one line at most.
  void Scan(std::string_view line) override;

  bool ServerHandleKnown(std::string_view handle) const;

 private:
  void Announce(const std::string& handle, bool requesting);
  void RequestAccessCode(const std::string& handle, const std::string& screenName);

  const Session& session_;
  Connection& connection_;
  OutputQueue& queue_;
  const Options& options_;
  ServerHandles& handles_;
  const Clock& clock_;
  std::function<std::string()> screenName_;
};

}  // namespace brindle
