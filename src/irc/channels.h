#pragma once
// The channels panel: the user's own list of rooms, and entering one.

#include <optional>
#include <string>

#include "base/dialogs.h"
#include "base/observed_list.h"
#include "irc/connection.h"
#include "irc/session.h"
#include "irc/window_view.h"
#include "settings/options.h"

namespace brindle {

class Channels {
 public:
  Channels(const Session& session, Connection& connection, const Options& options,
           WindowView& window, Dialogs& dialogs)
      : session_(session),
        connection_(connection),
        options_(options),
        window_(window),
        dialogs_(dialogs) {}

  // The rooms in order of adding, each "#" and a name in lower case.
  ObservedList<std::string>& Rooms() { return rooms_; }

  // Asks for a room and adds it, and enters it when the option says so.
  void lblChannelsAdd_Click();

  void lblChannelsRemove_Click(std::optional<size_t> selected);
  void lblJoin_Click(std::optional<size_t> selected);
  void lstChannels_DblClick(size_t selected) { lblJoin_Click(selected); }

 private:
  bool Knows(const std::string& room) const;

  const Session& session_;
  Connection& connection_;
  const Options& options_;
  WindowView& window_;
  Dialogs& dialogs_;
  ObservedList<std::string> rooms_;
};

}  // namespace brindle
