#include "ui/hover_help.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace brindle {
namespace {

struct Hint {
  std::string_view control;
  std::string_view text;
};

constexpr std::string_view kConnectButton = "cmdConnect";
constexpr std::string_view kConnectCaption = "Connect";
constexpr std::string_view kDisconnectHint = "Disconnect from the current IRC server.";

constexpr Hint kHints[] = {
    {"chkConnectTls",
     "Connect by TLS only: nobody on the way can read or change what is said. Needs the server's "
     "TLS port."},
    {"cmdCheckForUpdate", "Check for program updates."},
    {"cmdCommands", "Click this for commonly used commands when dealing with servers."},
    {kConnectButton, "Connect to the selected IRC server."},
    {"cmdConnectCancel", "Give up this attempt, or no longer connect again."},
    {"cmdConnectAdd", "Add a new IRC server to connect to."},
    {"cmdConnectRemove", "Remove selected IRC server."},
    {"cmdFind", "Search for a specific item in the list and display the results."},
    {"cmdInfoAdd", "Add a servers handle."},
    {"cmdInfoRemove", "Remove selected servers  handle."},
    {"cmdLoadList", "Load a servers list to make requesting mails easier."},
    {"cmdRequest",
     "Requests any items selected on the list from the server in the 'Requests Sent To' textbox."},
    {"cmdRequestStop", "Ends the run of requests; what was not asked for stays checked."},
    {"cmdSelect", "Click for several easy ways to make selecting quicker."},
    {"lblChannelsAdd", "Add a channel."},
    {"lblChannelsRemove", "Remove selected channel."},
    {"lblJoin", "Join selected channel."},
    {"lstServerList",
     "Selecting list items made easier by shift+left clicking or using the 'Select' button."},
    {"txtAccessCode",
     "This is used when selecting 'Verify Accesscode' menu item from the 'Commands' button."},
    {"txtAlternateNick", "An Alternate name in case your preferred nick is in use."},
    {"txtConnectNick", "The name you wish to be known by on IRC."},
    {"txtInfoAOLSN", "Enter the AOL Screen name where you want the mails to be sent."},
    {"txtListAOLSN", "Enter the AOL Screen name where you want the mails to be sent."},
    {"txtListFilter", "Show only the mails whose title contains this text."},
    {"txtListServer", "Requests will be sent to this server handle."},
    // The areas that clear the hint.
    {"frmMain", ""},
    {"picChannels", ""},
    {"picTab", ""},
    {"picWhosHere", ""},
};

constexpr int kAnyIndex = -1;

// Stands in a heading for the box's own caption.
constexpr char kOwnCaption = '*';

struct Help {
  std::string_view control;
  int index;
  std::string_view heading;
  std::string_view text;
};

constexpr std::string_view kListBackcolorText = "Determines the backcolor of the list window.";
constexpr std::string_view kListForecolorText = "Determines the forecolor of the list window.";
constexpr std::string_view kRoomBackcolorText = "Determines the backcolor of the room window.";
constexpr std::string_view kRoomForecolorText =
    "Determines the default color that is selected if the fontcolor is the same as the windows "
    "backcolor. IE: If white is the backcolor, and white is the color of text, the text would "
    "appear invisible. So instead the forecolor will be used.";

constexpr Help kHelps[] = {
    {"chkOptionsChat", 0, "Chat / Keep digits that stand apart from a colour mark",
     "If checked only digits directly behind a colour mark are its number. Otherwise a digit "
     "behind "
     "a blank is taken for the number too, and not shown."},
    {"chkOptionsChat", 1, "Chat / Ask before saying an unknown command",
     "If checked you are asked before a line that begins like a command, but is none that Brindle "
     "knows, is said in the room for all to see."},
    {"chkOptionsConnection", 0, "Connection / Connect again when the connection is lost",
     "If checked a lost connection is made again after growing pauses, the room is entered, and "
     "an interrupted run of requests is offered again."},
    {"chkOptionsConnection", 1, "Connection / Use what newer servers offer",
     "If checked Brindle asks the server what it can do beyond the old protocol: the time at which "
     "a line was said, who is away, and whether your own lines have arrived."},
    {"chkOptionsConnection", 2, "Connection / Catch up when many lines wait",
     "If checked and more than 500 lines wait to be shown, they are shown many at a time instead "
     "of one by one."},
    {"chkOptionsConnection", 3,
     "Connection / Ask before requests to a server that is not in the room",
     "If checked you are asked before mails are requested from a server whose name is not in the "
     "who's here list."},
    {"chkOptionsConnection", 4, "Connection / Answer questions about this program",
     "If checked others who ask for the program's version, for the time or for a ping are "
     "answered, a few times a minute."},
    {"chkOptionsConnection", 5,
     "Connection / Tell NickServ the password where a server has no accounts",
     "If checked and the server knows no accounts of its own, the password is told to NickServ "
     "after the welcome."},
    {"chkOptionsFind", 0, "Finds / *",
     "Clear the finds combobox of any items that were searched for."},
    {"chkOptionsFind", 1, "Finds / * X days",
     "If this is checked and an item hasn't been searched for in X amount of days it will be "
     "removed."},
    {"chkOptionsList", 0, "List / View channel on list tab",
     "If checked this will make the channel visible on the list tab."},
    {"chkOptionsList", 1, "List / Deselect selected after requested",
     "Deselects list items after they are requested."},
    {"chkOptionsMisc", 0, "Misc / Send notices to status window",
     "Determines if notices get sent to the channel window(unchecked) or to the status "
     "window(checked)."},
    {"chkOptionsMisc", 1, "Misc / Send messages to status window",
     "Determines if messages get sent to the channel window(unchecked) or to the status "
     "window(checked)."},
    {"chkOptionsMisc", 2, "Misc / Scan chat for servers",
     "This will scan the channel for servers. If one is found it will add thier handle to the "
     "server handle combobox."},
    {"chkOptionsMisc", 3, "Misc / Request accesscode if found",
     "If this is checked everytime a server is found via the option above it will request the "
     "servers accesscode(if a screen name is specified in the aol screen name textbox)."},
    {"chkOptionsMisc", 4, "Misc / Make window stay on top",
     "If checked this will keep the programs window above other windows."},
    {"chkOptionsRoom", 0, "Room / Include timestamp on chat lines",
     "Display the time the chatline was received."},
    {"chkOptionsRoom", 1, "Room / Try to enter room upon adding it",
     "When checked this will attempt to join the channel just added."},
    {"chkOptionsTheme", 0, "Theme / Keep chat colours readable",
     "If checked, text in the chat that could hardly be read on its background is shown lighter or "
     "darker. What you copy keeps its colour."},
    {"cmbOptionsAccount", kAnyIndex, "Connection / Account",
     "How you prove to the server that an account there is yours, before the session begins."},
    {"txtOptionsAccount", kAnyIndex, "Connection / Account", "The name of your account."},
    {"txtOptionsPassword", kAnyIndex, "Connection / Password",
     "The password of your account. The system keeps it, not a file of Brindle. It goes only to a "
     "server that is reached by TLS."},
    {"txtOptionsCertificate", kAnyIndex, "Connection / Client certificate",
     "A PEM file with the certificate and the key that the server knows you by."},
    {"cmdOptionsCertificate", kAnyIndex, "Connection / Client certificate",
     "Choose the file of the certificate."},
    {"cmbOptionsProxy", kAnyIndex, "Connection / Proxy",
     "The way to IRC servers and to updates. A proxy looks up the names of the servers itself."},
    {"txtOptionsProxy", kAnyIndex, "Connection / Proxy",
     "The host and the port of the proxy, as host:port."},
    {"txtOptionsProxyUser", kAnyIndex, "Connection / Proxy user",
     "Your name at the proxy, where it asks for one."},
    {"txtOptionsProxyPassword", kAnyIndex, "Connection / Proxy password",
     "Your password at the proxy. The system keeps it, not a file of Brindle. The proxy, and "
     "whoever "
     "listens on the way to it, can read it."},
    {"cmbOptionsTheme", kAnyIndex, "Theme",
     "Light or dark windows. Colours that you picked yourself stay as they are."},
    {"spnOptionsLines", kAnyIndex, "Chat / Keep at most N lines",
     "How many lines of chat each view keeps. When there are more, the oldest go, so that days of "
     "chat do not fill the memory."},
    {"lblListBackcolor", kAnyIndex, "List / Backcolor", kListBackcolorText},
    {"picListBackcolor", kAnyIndex, "List / Backcolor", kListBackcolorText},
    {"lblListForecolor", kAnyIndex, "List / Forecolor", kListForecolorText},
    {"picListForecolor", kAnyIndex, "List / Forecolor", kListForecolorText},
    {"lblRoomBackcolor", kAnyIndex, "Room / Backcolor", kRoomBackcolorText},
    {"picRoomBackcolor", kAnyIndex, "Room / Backcolor", kRoomBackcolorText},
    {"lblRoomForecolor", kAnyIndex, "Room / Forecolor", kRoomForecolorText},
    {"picRoomForecolor", kAnyIndex, "Room / Forecolor", kRoomForecolorText},
};

}  // namespace

std::optional<std::string> StatusHint(std::string_view control, std::string_view caption) {
  if (control == kConnectButton && caption != kConnectCaption) return std::string(kDisconnectHint);
  const auto* row = std::find_if(std::begin(kHints), std::end(kHints),
                                 [&](const Hint& hint) { return hint.control == control; });
  if (row == std::end(kHints)) return std::nullopt;
  return std::string(row->text);
}

std::optional<std::string> OptionHelp(std::string_view control, int index,
                                      std::string_view caption) {
  const auto* row = std::find_if(std::begin(kHelps), std::end(kHelps), [&](const Help& help) {
    return help.control == control && (help.index == kAnyIndex || help.index == index);
  });
  if (row == std::end(kHelps)) return std::nullopt;
  std::string help(row->heading);
  if (const size_t own = help.find(kOwnCaption); own != std::string::npos) {
    help.replace(own, 1, caption);
  }
  help.append(kCrLf).append(kCrLf).append(row->text);
  return help;
}

std::vector<std::string> ControlsWithHelp() {
  std::vector<std::string> names;
  for (const Hint& hint : kHints) names.emplace_back(hint.control);
  for (const Help& help : kHelps) {
    names.emplace_back(help.control);
    if (help.index != kAnyIndex) names.back() += "_" + std::to_string(help.index);
  }
  return names;
}

}  // namespace brindle
