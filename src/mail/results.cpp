#include "mail/results.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "base/text.h"
#include "mail/title_search.h"

namespace brindle {
namespace {

constexpr char kSection[] = "results";
constexpr long long kLargestTwips = 150000;

ResultsGeometry ReadGeometry(const SettingsFile& settings) {
  const auto twips = [&settings](const char* key, int otherwise) {
    const long long stored = settings.ReadNumber(kSection, key, std::to_string(otherwise));
    return static_cast<int>(std::clamp(stored, 0LL, kLargestTwips));
  };
  const ResultsGeometry first;
  return {twips("height", first.height), twips("width", first.width),
          twips("column1", first.column1), twips("column2", first.column2)};
}

void WriteGeometry(SettingsFile& settings, const ResultsGeometry& geometry) {
  settings.WriteSettings({{kSection, "height", std::to_string(geometry.height)},
                          {kSection, "width", std::to_string(geometry.width)},
                          {kSection, "column1", std::to_string(geometry.column1)},
                          {kSection, "column2", std::to_string(geometry.column2)}});
}

// The position in the main list, from 0, that a mail number stands for.
std::optional<size_t> PositionOf(std::string_view number, size_t rows) {
  number = TrimBlanks(number);
  if (number.starts_with('+')) number.remove_prefix(1);
  const std::optional<long long> value = WholeNumber(number, 1, static_cast<long long>(rows));
  if (!value) return std::nullopt;
  return static_cast<size_t>(*value) - 1;
}

}  // namespace

Results::Results(MailList& main, Finds& finds, SettingsFile& settings, Dialogs& dialogs,
                 const Clock& clock, EventPump& events)
    : main_(main),
      finds_(finds),
      settings_(settings),
      dialogs_(dialogs),
      clock_(clock),
      events_(events) {
  main_.Observe(*this);
}

Results::~Results() { main_.StopObserving(*this); }

bool Results::cmdFind_Click() {
  if (main_.Size() > 0) return true;
  dialogs_.Notice(Icon::kInformation,
                  "The list is currently empty.\r\nSo unless you are looking for nothing, you "
                  "can't use this feature.");
  return false;
}

ResultsGeometry Results::Form_Load(ResultsView& view) {
  view_ = &view;
  finds_.Load();
  view_->SetSearchText(settings_.ReadSetting("find", "last"));
  return ReadGeometry(settings_);
}

void Results::Form_Unload() {
  view_ = nullptr;
  ++turn_;
  searched_.clear();
  found_.Clear();
}

void Results::cmdSearch_Click(const std::string& text) {
  if (IsBlank(text)) return;
  settings_.WriteSetting("find", "last", text);
  // First, because the window may be closed, and what it remembers saved, before the search begins.
  finds_.Remember(text);
  view_->SetSearchText(text);
  view_->SetSearchCaption("Searching...");
  view_->EnableSearch(false);
  const int mine = ++turn_;
  events_.LetEventsRun(0);
  if (turn_ != mine) return;
  searched_ = text;
  Search();
  view_->EnableSearch(true);
  view_->SetSearchCaption("Search Completed");
  view_->FocusSearch();
}

void Results::RowsReplaced() {
  if (searched_.empty()) return;
  Search();
  view_->SetSearchCaption("The list was replaced and searched again");
}

void Results::Search() {
  const TickCount start = clock_.Ticks();
  found_.ShowRowsOf(main_, RowNumbersWithTitle(main_, LowerCase(searched_)));
  sent_ = RowSet(found_.Size());
  view_->SetCounts(main_.Size(), found_.Size(), clock_.Ticks() - start);
}

void Results::cmdSelected_Click() {
  if (found_.CheckedCount() == 0) {
    dialogs_.Notice(Icon::kCritical, "There are no items selected to send to the listbox.");
    return;
  }
  SendRows(found_.Checked());
}

void Results::cmdAll_Click() {
  RowSet all(found_.Size());
  if (all.Rows() > 0) all.AddRange(0, all.Rows() - 1);
  SendRows(all);
}

void Results::SendRows(const RowSet& rows) {
  view_->EnableSending(false);
  {
    const MailList::BulkChange bulk(main_);
    for (auto row = rows.Next(0); row; row = rows.Next(*row + 1)) {
      const std::optional<size_t> position = PositionOf(found_.Number(*row), main_.Size());
      if (position) main_.SetChecked(*position, true);
    }
  }
  sent_.AddAll(rows);
  view_->EnableSending(true);
  dialogs_.Notice(Icon::kInformation, "Selected " + std::to_string(rows.Count()) +
                                          (rows.Count() == 1 ? " item" : " items") + ".");
}

bool Results::HasUnsentChecks() const {
  auto row = found_.NextChecked(0);
  while (row && sent_.Contains(*row)) row = found_.NextChecked(*row + 1);
  return row.has_value();
}

bool Results::cmdReturn_Click(const ResultsGeometry& geometry) {
  if (HasUnsentChecks() &&
      !dialogs_.Question(Icon::kExclamation,
                         "You have items on the list selected but you didn't send them to the main "
                         "list to be selected.\r\nAre you sure you wish to continue?")) {
    return false;
  }
  Save(geometry);
  return true;
}

void Results::Save(const ResultsGeometry& geometry) {
  WriteGeometry(settings_, geometry);
  finds_.Save();
}

}  // namespace brindle
