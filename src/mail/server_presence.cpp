#include "mail/server_presence.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {

bool ServerPresence::MayRequestFrom(const std::vector<std::string>& handles) const {
  if (!options_.askAbsentServer) return true;
  std::vector<std::string_view> absent;
  for (const std::string& handle : handles) {
    const std::string_view nick = TrimBlanks(handle);
    const bool isNamed = std::find(absent.begin(), absent.end(), nick) != absent.end();
    if (!who_.IsHere(nick) && !isNamed) absent.push_back(nick);
  }
  if (absent.empty()) return true;
  return dialogs_.Question(Icon::kExclamation, JoinFrom(absent, 0, ", ") +
                                                   (absent.size() == 1 ? " is" : " are") +
                                                   " not in the room. Send the requests anyway?");
}

}  // namespace brindle
