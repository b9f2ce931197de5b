#include "irc/who_list.h"

#include "base/text.h"
#include "irc/nick_words.h"

namespace brindle {
namespace {

constexpr size_t kFirstNameWord = 5;

std::string Key(std::string_view entry) { return LowerCase(WithoutStatusMarks(entry)); }

}  // namespace

void WhoList::AddNames(const IrcLine& reply, bool clearFirst, Marks marks) {
  if (clearFirst) Clear();
  for (size_t i = kFirstNameWord; i < reply.WordCount(); ++i) {
    std::string_view name = reply.Word(i);
    if (i == kFirstNameWord && !name.empty()) name.remove_prefix(1);
    if (name.empty()) continue;
    const std::string_view nick = WithoutStatusMarks(name);
    const bool hasSeveral = name.size() > nick.size() + 1;
    if (marks == Marks::kHighest && hasSeveral) {
      nicks_.Add(std::string(name.substr(0, 1)).append(nick));
    } else {
      nicks_.Add(name);
    }
  }
}

void WhoList::AddNick(std::string_view nick) { nicks_.Add(nick); }

void WhoList::RemoveNick(std::string_view nick) {
  if (nick.empty()) return;
  nicks_.Remove(nick);
  if (!away_.empty()) away_.erase(Key(nick));
}

void WhoList::RenameNick(std::string_view oldNick, std::string_view newNick) {
  const bool wasAway = IsAway(oldNick);
  RemoveNick(oldNick);
  AddNick(newNick);
  if (wasAway) SetAway(newNick, true);
}

void WhoList::SetAway(std::string_view nick, bool away) {
  if (nick.empty() || away == IsAway(nick)) return;
  nicks_.Renew(nick, [&] {
    if (away) {
      away_.insert(Key(nick));
    } else {
      away_.erase(Key(nick));
    }
  });
}

bool WhoList::IsAway(std::string_view entry) const {
  return !away_.empty() && away_.contains(Key(entry));
}

void WhoList::Clear() {
  away_.clear();
  nicks_.Clear();
}

std::string WhoList::Caption() const {
  return "Who's here (" + std::to_string(nicks_.Size()) + ")";
}

}  // namespace brindle
