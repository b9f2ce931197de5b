#pragma once
// What is selected in a chat log: from an anchor, which stays, to a caret, which follows the mouse
// or the keys, in whole characters, words or lines. Text that is appended does not change it.

#include "irc/chat_log.h"

namespace brindle {

enum class SelectionUnit { kCharacter, kWord, kLine };

class ChatSelection {
 public:
  explicit ChatSelection(const ChatLog& log) : log_(log) {}

  // Begins anew with the unit around `position` (for kCharacter: nothing).
  void Start(LogPosition position, SelectionUnit unit);
  // Moves the caret; what was selected at the start stays selected.
  void ExtendTo(LogPosition position);
  void Set(const LogRange& range);
  // The log has lost so many lines at its front.
  void Shift(size_t lines);

  LogRange Range() const { return range_; }
  bool IsEmpty() const { return range_.IsEmpty(); }
  LogPosition Caret() const { return caret_; }

 private:
  LogRange UnitAt(LogPosition position) const;
  LogRange WordAt(LogPosition position) const;

  const ChatLog& log_;
  SelectionUnit unit_ = SelectionUnit::kCharacter;
  LogRange anchor_;
  LogRange range_;
  LogPosition caret_;
};

}  // namespace brindle
