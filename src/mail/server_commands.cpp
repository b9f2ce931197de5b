#include "mail/server_commands.h"

#include "base/text.h"

namespace brindle {
namespace {

constexpr char kNoScreenName[] = "You must enter an AOL Screen Name for this to work.";
constexpr char kNoAccessCode[] = "You must enter your accesscode for this to work.";
constexpr char kNoHandle[] = "You must enter a servers handle for this to work.";

}  // namespace

void ServerCommands::mnuCommandsRequest_Click(const CommandFields& fields) {
  Run(fields.screenName, kNoScreenName, fields, " send " + fields.screenName + " accesscode");
}

void ServerCommands::mnuCommandsVerify_Click(const CommandFields& fields) {
  Run(fields.accessCode, kNoAccessCode, fields,
      " verify " + fields.screenName + " " + fields.accessCode);
}

void ServerCommands::mnuCommandsList_Click(const CommandFields& fields) {
  Run(fields.screenName, kNoScreenName, fields, " send " + fields.screenName + " list");
}

void ServerCommands::mnuCommandsStatus_Click(const CommandFields& fields) {
  Run(fields.screenName, kNoScreenName, fields, " send " + fields.screenName + " status");
}

void ServerCommands::Run(const std::string& required, const char* refusal,
                         const CommandFields& fields, const std::string& tail) {
  if (!voice_.IsConnected()) {
    dialogs_.Notice(Icon::kInformation,
                    "You must first connect to a server before entering a room.");
  } else if (IsBlank(required)) {
    dialogs_.Notice(Icon::kInformation, refusal);
  } else if (IsBlank(fields.handle)) {
    dialogs_.Notice(Icon::kInformation, kNoHandle);
  } else {
    voice_.SayWhole("!" + fields.handle + tail);
  }
}

}  // namespace brindle
