// The hover texts, looked up by control.

#include "ui/hover_help.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(HoverHelpTest, HintsOfButtonsAndFields) {
  const struct {
    const char* control;
    const char* caption;
    std::optional<std::string> hint;
  } cases[] = {
      {"cmdConnect", "Connect", "Connect to the selected IRC server."},
      {"cmdConnect", "Disconnect", "Disconnect from the current IRC server."},
      {"cmdConnect", "Cancel", "Disconnect from the current IRC server."},
      {"cmdInfoRemove", "Remove", "Remove selected servers  handle."},
      {"lstServerList", "",
       "Selecting list items made easier by shift+left clicking or using the 'Select' button."},
      {"frmMain", "", ""},
      {"picChannels", "", ""},
      {"picTab", "", ""},
      {"picWhosHere", "", ""},
      {"cmdSend", "Send", std::nullopt},
      {"chkOptionsMisc", "Scan chat for servers", std::nullopt},
      {"", "", std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StatusHint(c.control, c.caption), c.hint) << c.control << " " << c.caption;
  }
}

TEST(HoverHelpTest, HelpOfOptions) {
  const std::string forecolor =
      "Room / Forecolor\r\n\r\nDetermines the default color that is selected if the fontcolor is "
      "the same as the windows backcolor. IE: If white is the backcolor, and white is the color of "
      "text, the text would appear invisible. So instead the forecolor will be used.";
  const struct {
    const char* control;
    int index;
    const char* caption;
    std::optional<std::string> help;
  } cases[] = {
      {"chkOptionsFind", 0, "Clear * finds",
       "Finds / Clear * finds\r\n\r\n"
       "Clear the finds combobox of any items that were searched for."},
      {"chkOptionsFind", 1, "Remove old finds",
       "Finds / Remove old finds X days\r\n\r\nIf this is checked and an item hasn't been searched "
       "for in X amount of days it will be removed."},
      {"chkOptionsMisc", 1, "Send mesagess to status window",
       "Misc / Send messages to status window\r\n\r\nDetermines if messages get sent to the "
       "channel window(unchecked) or to the status window(checked)."},
      {"chkOptionsRoom", 0, "renamed",
       "Room / Include timestamp on chat lines\r\n\r\nDisplay the time the chatline was received."},
      {"lblRoomForecolor", -1, "", forecolor},
      {"picRoomForecolor", -1, "", forecolor},
      {"chkOptionsFind", 2, "", std::nullopt},
      {"chkOptionsMisc", -1, "", std::nullopt},
      {"chkOptionsSound", 0, "", std::nullopt},
      {"cmdFind", -1, "", std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(OptionHelp(c.control, c.index, c.caption), c.help) << c.control << c.index;
  }
}

}  // namespace
}  // namespace brindle
