#include "mail/results.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "base/text.h"
#include "mail/title_search.h"

namespace brindle {
namespace {

// The position in the main list, from 0, that a mail number stands for.
std::optional<size_t> PositionOf(std::string_view number, size_t rows) {
  number = TrimBlanks(number);
  if (number.starts_with('+')) number.remove_prefix(1);
  const std::optional<long long> value = WholeNumber(number, 1, static_cast<long long>(rows));
  if (!value) return std::nullopt;
  return static_cast<size_t>(*value) - 1;
}

}  // namespace

bool Results::cmdFind_Click() {
  if (main_.Size() > 0) return true;
  dialogs_.Notice(Icon::kInformation,
                  "The list is currently empty.\r\nSo unless you are looking for nothing, you "
                  "can't use this feature.");
  return false;
}

ResultsGeometry Results::Form_Load(ResultsView& view) {
  view_ = &view;
  finds_.Clear();
  for (const Find& find : store_.Finds()) finds_.Add(find);
  found_.Clear();
  view_->SetSearchText(store_.LastSearch());
  return store_.Geometry();
}

void Results::cmdSearch_Click(const std::string& text) {
  if (IsBlank(text)) return;
  store_.SetLastSearch(text);
  view_->SetSearchCaption("Searching...");
  view_->EnableSearch(false);
  events_.LetEventsRun(0);
  // The window may have been closed meanwhile.
  if (view_ == nullptr) return;
  found_.Clear();
  Remember(text);
  const TickCount start = clock_.Ticks();
  Fill(text);
  view_->SetCounts(main_.Size(), found_.Size(), clock_.Ticks() - start);
  view_->SetTitleHeader(MailTitleHeader(0, found_.Size()));
  view_->EnableSearch(true);
  view_->SetSearchCaption("Search Completed");
  view_->FocusSearch();
}

void Results::Remember(const std::string& text) {
  const std::vector<Find>& known = finds_.Items();
  const auto same = std::find_if(known.begin(), known.end(), [&](const Find& find) {
    return MatchKey(find.text) == MatchKey(text);
  });
  if (same != known.end()) finds_.RemoveAt(static_cast<size_t>(same - known.begin()));
  finds_.Add({text, store_.Today()});
  view_->SetSearchText(text);
}

void Results::Fill(const std::string& text) {
  found_.ShowRowsOf(main_, RowNumbersWithTitle(main_, LowerCase(text)));
}

void Results::cmdSelected_Click() {
  std::vector<size_t> rows;
  for (std::optional<size_t> row = found_.NextChecked(0); row; row = found_.NextChecked(*row + 1)) {
    rows.push_back(*row);
  }
  if (rows.empty()) {
    dialogs_.Notice(Icon::kCritical, "There are no items selected to send to the listbox.");
    return;
  }
  SendRows(rows);
}

void Results::cmdAll_Click() {
  std::vector<size_t> rows(found_.Size());
  std::iota(rows.begin(), rows.end(), size_t{0});
  SendRows(rows);
}

void Results::SendRows(const std::vector<size_t>& rows) {
  view_->EnableSending(false);
  {
    const MailList::BulkChange bulk(main_);
    for (size_t row : rows) {
      const std::optional<size_t> position = PositionOf(found_.Number(row), main_.Size());
      if (position) main_.SetChecked(*position, true);
    }
  }
  mainView_.SetTitleHeader(MailTitleHeader(main_.CheckedCount(), main_.Size()));
  view_->EnableSending(true);
  dialogs_.Notice(Icon::kInformation, "Selected " + std::to_string(rows.size()) +
                                          (rows.size() == 1 ? " item" : " items") + ".");
}

bool Results::cmdReturn_Click(const ResultsGeometry& geometry) {
  if (found_.CheckedCount() > 0 &&
      !dialogs_.Question(Icon::kExclamation,
                         "You have items on the list selected but you didn't send them to the main "
                         "list to be selected.\r\nAre you sure you wish to continue?")) {
    return false;
  }
  Save(geometry);
  return true;
}

void Results::Save(const ResultsGeometry& geometry) {
  store_.SetGeometry(geometry);
  store_.SetFinds(finds_.Items());
}

}  // namespace brindle
