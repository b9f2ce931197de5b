#include "mail/list_selection.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "base/text.h"
#include "mail/title_search.h"

namespace brindle {
namespace {

// Shift-click walks the rows with a 16-bit count.
constexpr size_t kRowsInReach = std::numeric_limits<std::int16_t>::max();

constexpr const char* kNothingLoaded =
    "The list is empty. Please load a servers list before going any further.";
constexpr const char* kNothingToDeselect = "The list is empty, thus, there is nothing to deselect.";
constexpr const char* kTwoNeeded =
    "In order to select between 2 mails, you need 2 mails selected. Please select another.";
constexpr const char* kEvenNeeded =
    "An even number of mails must be selected. Please select a stopping point or deselect one.";
constexpr const char* kAskForTitle = "Please enter what you would like selected.";

}  // namespace

void ListSelection::mnuSelectAll_Click(MailList& list) { list.CheckAll(); }

void ListSelection::mnuSelectNone_Click(MailList& list) {
  if (list.Size() == 0) return Inform(kNothingToDeselect);
  list.UncheckAll();
}

void ListSelection::mnuSelectBetween_Click(MailList& list) {
  if (list.Size() == 0) return Inform(kNothingLoaded);
  if (list.CheckedCount() < 2) return Inform(kTwoNeeded);
  if (list.CheckedCount() % 2 != 0) return Inform(kEvenNeeded);
  {
    const MailList::BulkChange change(list);
    auto start = list.NextChecked(0);
    while (start) {
      // The count is even, so every start has its stop.
      const size_t stop = *list.NextChecked(*start + 1);
      list.CheckRange(*start, stop);
      start = list.NextChecked(stop + 1);
    }
  }
}

void ListSelection::mnuSelectString_Click(MailList& list) {
  if (list.Size() == 0) return Inform(kNothingLoaded);
  const std::optional<std::string> answer = dialogs_.Input(kAskForTitle);
  if (!answer || IsBlank(*answer)) return;

  const std::string wanted = LowerCase(*answer);
  const RowSet found = RowsWithTitle(list, wanted);
  list.CheckRows(found);
  const std::string quoted = "'" + wanted + "'.";
  dialogs_.Notice(Icon::kInformation, found.Count() > 0
                                          ? "Found and selected " + std::to_string(found.Count()) +
                                                " with the title " + quoted
                                          : "Couldn't find any titles with " + quoted);
}

Marking ListSelection::lstServerList_MouseUp(MailList& list, const Modifiers& modifiers,
                                             const std::vector<RowRange>& highlighted) {
  if (!modifiers.shift || modifiers.control || modifiers.alt) return Marking::kDone;
  const size_t end = std::min(list.Size(), kRowsInReach);
  auto marking = Marking::kDone;
  const MailList::BulkChange change(list, MailList::Header::kStays);
  for (const RowRange& range : highlighted) {
    if (range.first < end) list.CheckRange(range.first, std::min(range.last, end - 1));
    if (range.last >= kRowsInReach && list.Size() > kRowsInReach) marking = Marking::kCutShort;
  }
  return marking;
}

}  // namespace brindle
