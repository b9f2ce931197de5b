#include "mail/mail_list.h"

#include <cassert>
#include <limits>
#include <utility>

#include "base/text.h"

namespace brindle {
namespace {

constexpr size_t kMostText = std::numeric_limits<std::uint32_t>::max();

bool Fits(const std::string& buffer, std::string_view more) {
  return more.size() <= kMostText - buffer.size();
}

}  // namespace

void MailList::Clear() { TakeRows(Rows()); }

void MailList::Replace(MailList& other) {
  TakeRows(std::exchange(other.rows_, Rows()));
  ++other.generation_;
}

void MailList::TakeRows(Rows rows) {
  if (observer_ != nullptr) observer_->RowsAboutToBeReplaced();
  rows_ = std::move(rows);
  ++generation_;
  if (observer_ != nullptr) observer_->RowsReplaced();
}

bool MailList::Append(std::string_view number, std::string_view title) {
  assert(observer_ == nullptr);
  if (!Fits(rows_.numbers, number) || !Fits(rows_.titles, title)) return false;
  rows_.numbers.append(number);
  rows_.titles.append(title);
  rows_.ends.push_back({static_cast<std::uint32_t>(rows_.numbers.size()),
                        static_cast<std::uint32_t>(rows_.titles.size())});
  rows_.checked.PushBack(false);
  rows_.nonAscii.PushBack(!IsAscii(title));
  return true;
}

void MailList::GiveBackMemory() {
  // Shrinking copies the text: not worth it for less than half of the room.
  if (rows_.titles.size() < rows_.titles.capacity() / 2) rows_.titles.shrink_to_fit();
}

std::string_view MailList::Number(size_t row) const {
  assert(row < Size());
  const size_t begin = row == 0 ? 0 : rows_.ends[row - 1].number;
  return std::string_view(rows_.numbers).substr(begin, rows_.ends[row].number - begin);
}

std::string_view MailList::Title(size_t row) const {
  assert(row < Size());
  const size_t begin = row == 0 ? 0 : rows_.ends[row - 1].title;
  return std::string_view(rows_.titles).substr(begin, rows_.ends[row].title - begin);
}

void MailList::SetChecked(size_t row, bool checked) {
  if (!rows_.checked.Set(row, checked)) return;
  if (bulkDepth_ > 0) {
    bulkChanged_ = true;
  } else if (observer_ != nullptr) {
    observer_->CheckChanged(row);
  }
}

void MailList::CheckAll() {
  if (Size() > 0) CheckRange(0, Size() - 1);
}

void MailList::UncheckAll() {
  if (rows_.checked.RemoveAll()) TellChecksChanged();
}

void MailList::CheckRange(size_t first, size_t last) {
  if (rows_.checked.AddRange(first, last)) TellChecksChanged();
}

void MailList::CheckRows(const RowSet& rows) {
  if (rows_.checked.AddAll(rows)) TellChecksChanged();
}

void MailList::TellChecksChanged() {
  if (bulkDepth_ > 0) {
    bulkChanged_ = true;
  } else if (observer_ != nullptr) {
    observer_->ChecksChanged();
  }
}

void MailList::EndBulkChange() {
  if (--bulkDepth_ > 0 || !std::exchange(bulkChanged_, false)) return;
  TellChecksChanged();
}

std::string MailTitleHeader(size_t checked, size_t total) {
  return "Mail Title [" + std::to_string(checked) + "/" + std::to_string(total) + "]";
}

}  // namespace brindle
