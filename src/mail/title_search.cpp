#include "mail/title_search.h"

#include <algorithm>
#include <cassert>
#include <iterator>

#include "base/text.h"
#include "mail/text_sweep.h"

namespace brindle {
namespace {

// A list that shows less than this part of its texts is searched row by row.
constexpr size_t kSmallPart = 16;

std::vector<std::uint32_t> SearchEachRow(const MailList& list, std::string_view lowerText) {
  std::vector<std::uint32_t> found;
  const std::vector<std::uint32_t>& textRows = list.TextRows();
  for (size_t row = 0; row < textRows.size(); ++row) {
    if (list.Texts()->LowerTitle(textRows[row]).find(lowerText) != std::string_view::npos) {
      found.push_back(static_cast<std::uint32_t>(row));
    }
  }
  return found;
}

// Searches all texts and keeps what the list shows: both are in ascending order.
std::vector<std::uint32_t> SearchAllTexts(const MailList& list, std::string_view lowerText) {
  std::vector<std::uint32_t> found;
  const std::vector<std::uint32_t>& textRows = list.TextRows();
  size_t row = 0;
  for (std::uint32_t textRow : SweepTitles(*list.Texts(), lowerText)) {
    while (row < textRows.size() && textRows[row] < textRow) ++row;
    if (row == textRows.size()) break;
    if (textRows[row] == textRow) found.push_back(static_cast<std::uint32_t>(row));
  }
  return found;
}

}  // namespace

std::vector<std::uint32_t> RowNumbersWithTitle(const MailList& list, std::string_view lowerText) {
  assert(!lowerText.empty());
  if (list.Size() == 0) return {};
  if (list.TextRows().empty()) return SweepTitles(*list.Texts(), lowerText);
  return list.Size() < list.Texts()->Size() / kSmallPart ? SearchEachRow(list, lowerText)
                                                         : SearchAllTexts(list, lowerText);
}

std::vector<std::uint32_t> RowNumbersMatching(const MailList& list, std::string_view text) {
  std::vector<std::uint32_t> titles = RowNumbersWithTitle(list, LowerCase(text));
  if (!IsAllDigits(text)) return titles;
  std::vector<std::uint32_t> numbers;
  for (size_t row = 0; row < list.Size(); ++row) {
    if (list.Number(row).starts_with(text)) numbers.push_back(static_cast<std::uint32_t>(row));
  }
  std::vector<std::uint32_t> both;
  std::set_union(titles.begin(), titles.end(), numbers.begin(), numbers.end(),
                 std::back_inserter(both));
  return both;
}

RowSet RowsWithTitle(const MailList& list, std::string_view lowerText) {
  RowSet found(list.Size());
  for (std::uint32_t row : RowNumbersWithTitle(list, lowerText)) found.Set(row, true);
  return found;
}

}  // namespace brindle
