#include "mail/title_search.h"

#include <algorithm>
#include <cassert>

#include "base/encoding.h"
#include "base/text.h"

namespace brindle {
namespace {

// A list that shows less than this part of its texts is searched row by row.
constexpr size_t kSmallPart = 16;

std::vector<std::uint32_t> SearchEachRow(const MailList& list, std::string_view lowerText,
                                         SearchIn where) {
  std::vector<std::uint32_t> found;
  for (size_t row = 0; row < list.Size(); ++row) {
    const bool number =
        where == SearchIn::kTitlesAndNumbers && list.Number(row).starts_with(lowerText);
    if (number || LowerCase(list.Title(row)).find(lowerText) != std::string::npos) {
      found.push_back(static_cast<std::uint32_t>(row));
    }
  }
  return found;
}

std::vector<std::uint32_t> Search(const MailList& list, std::string_view lowerText,
                                  SearchIn where) {
  assert(!lowerText.empty());
  if (list.Size() == 0) return {};
  const std::vector<std::uint32_t>& shown = list.TextRows();
  const bool few = list.Size() < list.Texts()->Size() / kSmallPart;
  if (few || !IsValidUtf8(lowerText)) return SearchEachRow(list, lowerText, where);
  std::vector<std::uint32_t> found =
      SweepTexts(*list.Texts(), {0, list.Texts()->Size()}, lowerText, where);
  if (shown.empty()) return found;
  // Of all texts, what the list shows: both are in ascending order.
  size_t row = 0;
  size_t kept = 0;
  for (std::uint32_t textRow : found) {
    while (row < shown.size() && shown[row] < textRow) ++row;
    if (row == shown.size()) break;
    if (shown[row] == textRow) found[kept++] = static_cast<std::uint32_t>(row);
  }
  found.resize(kept);
  return found;
}

}  // namespace

std::vector<std::uint32_t> RowNumbersWithTitle(const MailList& list, std::string_view lowerText) {
  return Search(list, lowerText, SearchIn::kTitles);
}

RowSet RowsWithTitle(const MailList& list, std::string_view lowerText) {
  return {list.Size(), RowNumbersWithTitle(list, lowerText)};
}

RowFilter::RowFilter(const MailList& list, std::string_view text)
    : list_(list),
      lowerText_(LowerCase(text)),
      where_(IsAllDigits(text) ? SearchIn::kTitlesAndNumbers : SearchIn::kTitles),
      inParts_(list.TextRows().empty() && IsValidUtf8(lowerText_)) {}

std::vector<std::uint32_t> RowFilter::Next(size_t bytes) {
  if (IsDone()) return {};
  const size_t first = nextRow_;
  nextRow_ = list_.Size();
  if (!inParts_) return Search(list_, lowerText_, where_);
  const MailTexts& texts = *list_.Texts();
  const std::uint32_t* begins = texts.Begins();
  if (bytes < texts.Text().size() - begins[first]) {
    const auto end = static_cast<std::uint32_t>(begins[first] + bytes);
    const std::uint32_t* next = std::upper_bound(begins + first + 1, begins + nextRow_, end);
    nextRow_ = static_cast<size_t>(next - begins);
  }
  return SweepTexts(texts, {first, nextRow_}, lowerText_, where_);
}

}  // namespace brindle
