#pragma once
// The four housekeeping commands that a user sends to a mail server, each one public line in the
// current room: ask for an access code, verify it, ask for the list, ask for the status.

#include <string>

#include "base/clock.h"
#include "base/dialogs.h"
#include "irc/connection.h"
#include "irc/output_queue.h"
#include "irc/session.h"
#include "settings/options.h"

namespace brindle {

// The texts of the "Info / Commands" panel at the moment of a click, as typed.
struct CommandFields {
  std::string screenName;  // txtInfoAOLSN
  std::string accessCode;  // txtAccessCode
  std::string handle;      // cmbServers
};

class ServerCommands {
 public:
  ServerCommands(const Session& session, Connection& connection, OutputQueue& queue,
                 const Options& options, Dialogs& dialogs, const Clock& clock)
      : session_(session),
        connection_(connection),
        queue_(queue),
        options_(options),
        dialogs_(dialogs),
        clock_(clock) {}

  void mnuCommandsRequest_Click(const CommandFields& fields);
  void mnuCommandsVerify_Click(const CommandFields& fields);
  void mnuCommandsList_Click(const CommandFields& fields);
  void mnuCommandsStatus_Click(const CommandFields& fields);

 private:
  // Sends the command unless `required`, the field it cannot do without, is empty.
  void Run(const std::string& required, const char* refusal, const CommandFields& fields,
           const std::string& tail);

  const Session& session_;
  Connection& connection_;
  OutputQueue& queue_;
  const Options& options_;
  Dialogs& dialogs_;
  const Clock& clock_;
};

}  // namespace brindle
