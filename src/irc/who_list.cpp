#include "irc/who_list.h"

#include "base/text.h"

namespace brindle {
namespace {

constexpr size_t kFirstNameWord = 5;

bool Matches(std::string_view entry, std::string_view nick) {
  return EqualsIgnoringCase(entry, nick) ||
         (!entry.empty() && EqualsIgnoringCase(entry.substr(1), nick));
}

}  // namespace

void WhoList::AddNames(const IrcLine& reply, bool clearFirst) {
  if (clearFirst) nicks_.Clear();
  for (size_t i = kFirstNameWord; i < reply.WordCount(); ++i) {
    std::string_view name = reply.Word(i);
    if (i == kFirstNameWord && !name.empty()) name.remove_prefix(1);
    if (!name.empty()) nicks_.Add(std::string(name));
  }
}

void WhoList::AddNick(std::string_view nick) { nicks_.Add(std::string(nick)); }

void WhoList::RemoveNick(std::string_view nick) {
  if (nick.empty()) return;
  for (size_t i = 0; i < nicks_.Size(); ++i) {
    if (Matches(nicks_.Items()[i], nick)) {
      nicks_.RemoveAt(i);
      return;
    }
  }
}

std::string WhoList::Caption() const {
  return "Who's here (" + std::to_string(nicks_.Size()) + ")";
}

}  // namespace brindle
