#pragma once
// Who's here: the nicks in the current room, in order of arrival. Entries from a names reply keep
// the server's status mark ("@" operator, "+" voiced). One list serves the one current room.

#include <set>
#include <string>
#include <string_view>

#include "irc/irc_line.h"
#include "irc/nick_list.h"

namespace brindle {

class WhoList {
 public:
  const NickList& Nicks() const { return nicks_; }

  // Which of several marks in front of a nick stay. They come with the highest first.
  enum class Marks { kAll, kHighest };

  // Adds every nick of a names reply (numeric 353), after clearing the list when `clearFirst`.
  void AddNames(const IrcLine& reply, bool clearFirst, Marks marks = Marks::kAll);

  void AddNick(std::string_view nick);

  bool IsHere(std::string_view nick) const { return !nick.empty() && nicks_.Contains(nick); }

  // Removes the first entry that equals `nick`, ignoring case, either whole or without its first
  // character. An empty nick removes nothing.
  void RemoveNick(std::string_view nick);

  // The same person under another nick.
  void RenameNick(std::string_view oldNick, std::string_view newNick);

  // The server says who is away. Who is not here does not count.
  void SetAway(std::string_view nick, bool away);
  // `entry` is a row of the list.
  bool IsAway(std::string_view entry) const;

  void Clear();

  // "Who's here (3)"
  std::string Caption() const;

 private:
  NickList nicks_;
  std::set<std::string, std::less<>> away_;  // nicks without marks, in lower case
};

}  // namespace brindle
