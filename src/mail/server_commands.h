#pragma once
// The four housekeeping commands that a user sends to a mail server, each one public line in the
// current room: ask for an access code, verify it, ask for the list, ask for the status.

#include <string>

#include "base/dialogs.h"
#include "irc/room_voice.h"

namespace brindle {

// The texts of the "Info / Commands" panel at the moment of a click, as typed.
struct CommandFields {
  std::string screenName;  // txtInfoAOLSN
  std::string accessCode;  // txtAccessCode
  std::string handle;      // cmbServers
};

enum class ServerCommand { kRequestCode, kVerifyCode, kRequestList, kRequestStatus };

class ServerCommands {
 public:
  // The line that a command says.
  static std::string Line(ServerCommand command, const CommandFields& fields);

  ServerCommands(RoomVoice& voice, Dialogs& dialogs) : voice_(voice), dialogs_(dialogs) {}

  // False when nothing was said, and the user was told why.
  bool mnuCommandsRequest_Click(const CommandFields& fields);
  bool mnuCommandsVerify_Click(const CommandFields& fields);
  bool mnuCommandsList_Click(const CommandFields& fields);
  bool mnuCommandsStatus_Click(const CommandFields& fields);

 private:
  // Sends the command unless `required`, the field it cannot do without, is empty.
  // False when it was not sent.
  bool Run(const std::string& required, const char* refusal, const CommandFields& fields,
           ServerCommand command);

  RoomVoice& voice_;
  Dialogs& dialogs_;
};

}  // namespace brindle
