#pragma once
// The Select menu and shift-click: ways of checking many rows at once. The menu serves two lists,
// the mail list of the main window and the results of a search.

#include <cstddef>
#include <vector>

#include "base/dialogs.h"
#include "mail/mail_list.h"

namespace brindle {

struct Modifiers {
  bool shift = false;
  bool control = false;
  bool alt = false;
};

// Rows `first` to `last` inclusive, from 0.
struct RowRange {
  size_t first;
  size_t last;
};

enum class Marking {
  kDone,
  kCutShort,  // highlighted rows beyond the 32767th were not reached
};

class ListSelection {
 public:
  // `dialogs` is not owned and must outlive this.
  explicit ListSelection(Dialogs& dialogs) : dialogs_(dialogs) {}

  // Offered for the results list only.
  void mnuSelectAll_Click(MailList& list);
  void mnuSelectNone_Click(MailList& list);
  // Takes the checked rows as pairs of start and stop and checks what lies between.
  void mnuSelectBetween_Click(MailList& list);
  // Asks for a text and checks the rows whose title contains it.
  void mnuSelectString_Click(MailList& list);

  // With Shift alone: checks the highlighted rows among the first 32767.
  Marking lstServerList_MouseUp(MailList& list, const Modifiers& modifiers,
                                const std::vector<RowRange>& highlighted);

 private:
  void Inform(const char* text) { dialogs_.Notice(Icon::kInformation, text); }

  Dialogs& dialogs_;
};

}  // namespace brindle
