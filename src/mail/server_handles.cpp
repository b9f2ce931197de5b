#include "mail/server_handles.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {

std::string NormalizeHandle(std::string_view handle) {
  return LowerCase(RemoveChars(handle, " \x1F\x02!"));
}

bool ServerHandles::ServerHandleMissing(std::string& handle) const {
  handle = NormalizeHandle(handle);
  const std::vector<std::string>& known = items_.Items();
  return std::find(known.begin(), known.end(), handle) == known.end();
}

bool ServerHandles::KnowsIgnoringCase(std::string_view handle) const {
  const std::vector<std::string>& known = items_.Items();
  return std::any_of(known.begin(), known.end(), [&](const std::string& item) {
    return NormalizeHandle(item) == NormalizeHandle(handle);
  });
}

void ServerHandles::AddServerHandle(std::string& handle) {
  handle = NormalizeHandle(handle);
  items_.Add(handle);
}

void ServerHandles::cmdInfoAdd_Click(const std::string& typed) {
  const std::string key = MatchKey(typed);
  if (key.empty()) return;
  for (const std::string& known : items_.Items()) {
    if (MatchKey(known) == key) {
      dialogs_.Notice(Icon::kInformation, "That server already exists in the list.");
      return;
    }
  }
  items_.Add(typed.starts_with('!') ? typed.substr(1) : typed);
}

void ServerHandles::cmdInfoRemove_Click(std::optional<size_t> selected) {
  if (selected) items_.RemoveAt(*selected);
}

}  // namespace brindle
