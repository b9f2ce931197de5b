#include "irc/who_list.h"

namespace brindle {
namespace {

constexpr size_t kFirstNameWord = 5;

}  // namespace

void WhoList::AddNames(const IrcLine& reply, bool clearFirst) {
  if (clearFirst) nicks_.Clear();
  for (size_t i = kFirstNameWord; i < reply.WordCount(); ++i) {
    std::string_view name = reply.Word(i);
    if (i == kFirstNameWord && !name.empty()) name.remove_prefix(1);
    if (!name.empty()) nicks_.Add(name);
  }
}

void WhoList::AddNick(std::string_view nick) { nicks_.Add(nick); }

void WhoList::RemoveNick(std::string_view nick) {
  if (!nick.empty()) nicks_.Remove(nick);
}

std::string WhoList::Caption() const {
  return "Who's here (" + std::to_string(nicks_.Size()) + ")";
}

}  // namespace brindle
