#include "mail/server_commands.h"

#include "base/text.h"

namespace brindle {
namespace {

constexpr char kNoScreenName[] = "You must enter an AOL Screen Name for this to work.";
constexpr char kNoAccessCode[] = "You must enter your accesscode for this to work.";
constexpr char kNoHandle[] = "You must enter a servers handle for this to work.";

}  // namespace

std::string ServerCommands::Line(ServerCommand command, const CommandFields& fields) {
  const std::string start = "!" + fields.handle;
  const std::string send = start + " send " + fields.screenName;
  switch (command) {
    case ServerCommand::kRequestCode:
      return send + " accesscode";
    case ServerCommand::kVerifyCode:
      return start + " verify " + fields.screenName + " " + fields.accessCode;
    case ServerCommand::kRequestList:
      return send + " list";
    case ServerCommand::kRequestStatus:
      return send + " status";
  }
  return "";
}

bool ServerCommands::mnuCommandsRequest_Click(const CommandFields& fields) {
  return Run(fields.screenName, kNoScreenName, fields, ServerCommand::kRequestCode);
}

bool ServerCommands::mnuCommandsVerify_Click(const CommandFields& fields) {
  return Run(fields.accessCode, kNoAccessCode, fields, ServerCommand::kVerifyCode);
}

bool ServerCommands::mnuCommandsList_Click(const CommandFields& fields) {
  return Run(fields.screenName, kNoScreenName, fields, ServerCommand::kRequestList);
}

bool ServerCommands::mnuCommandsStatus_Click(const CommandFields& fields) {
  return Run(fields.screenName, kNoScreenName, fields, ServerCommand::kRequestStatus);
}

bool ServerCommands::Run(const std::string& required, const char* refusal,
                         const CommandFields& fields, ServerCommand command) {
  if (!voice_.IsConnected()) {
    dialogs_.Notice(Icon::kInformation,
                    "You must first connect to a server before entering a room.");
  } else if (IsBlank(required)) {
    dialogs_.Notice(Icon::kInformation, refusal);
  } else if (IsBlank(fields.handle)) {
    dialogs_.Notice(Icon::kInformation, kNoHandle);
  } else {
    return voice_.SayWhole(Line(command, fields));
  }
  return false;
}

}  // namespace brindle
