#pragma once
// Asks the user before requests are said to a mail server that is not in the room, where nobody
// would hear them.

#include <string>
#include <vector>

#include "base/dialogs.h"
#include "irc/who_list.h"
#include "settings/options.h"

namespace brindle {

class ServerPresence {
 public:
  ServerPresence(const WhoList& who, const Options& options, Dialogs& dialogs)
      : who_(who), options_(options), dialogs_(dialogs) {}

  // True when all of them are here, when the user wants to go on without, and where the option to
  // ask is off.
  bool MayRequestFrom(const std::vector<std::string>& handles) const;

 private:
  const WhoList& who_;
  const Options& options_;
  Dialogs& dialogs_;
};

}  // namespace brindle
