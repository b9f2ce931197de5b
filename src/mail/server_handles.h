#pragma once
// The handles of the mail servers that the user knows: the items behind cmbServers, in order of
// adding. The list starts empty with the program and is not stored.

#include <optional>
#include <string>
#include <string_view>

#include "base/dialogs.h"
#include "base/observed_list.h"

namespace brindle {

// `handle` without blanks, underline and bold marks and "!", in lower case.
std::string NormalizeHandle(std::string_view handle);

class ServerHandles {
 public:
  explicit ServerHandles(Dialogs& dialogs) : dialogs_(dialogs) {}

  ObservedList<std::string>& Items() { return items_; }

  // True when no item equals the normalized handle; normalizes `handle` in place.
  bool ServerHandleMissing(std::string& handle) const;

  // True when an item is the normalized handle but for its case and marks.
  bool KnowsIgnoringCase(std::string_view handle) const;

  // Appends the normalized handle; normalizes `handle` in place.
  void AddServerHandle(std::string& handle);

  // Adds what the user typed, as typed but for one "!" in front. The test for a duplicate ignores
  // case and blanks but sees the "!".
  void cmdInfoAdd_Click(const std::string& typed);

  void cmdInfoRemove_Click(std::optional<size_t> selected);

 private:
  Dialogs& dialogs_;
  ObservedList<std::string> items_;
};

}  // namespace brindle
