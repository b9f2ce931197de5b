#include "mail/mail_list.h"

#include <cassert>
#include <utility>

namespace brindle {

void MailList::ClearBelowHeader() { TakeRows(Rows(), Size() > 0 ? Size() : totalInHeader_); }

void MailList::Replace(MailList& other) {
  TakeRows(std::exchange(other.rows_, Rows()));
  other.ownTexts_.reset();
  ++other.generation_;
}

void MailList::TakeRows(Rows rows, size_t totalInHeader) {
  Tell([](MailListObserver& observer) { observer.RowsAboutToBeReplaced(); });
  rows_ = std::move(rows);
  totalInHeader_ = totalInHeader;
  checkedInHeader_ = CheckedCount();
  ownTexts_.reset();
  ++generation_;
  Tell([](MailListObserver& observer) { observer.RowsReplaced(); });
}

void MailList::SetTexts(std::shared_ptr<const MailTexts> texts) {
  Rows rows;
  rows.checked = RowSet(texts->Size());
  rows.texts = std::move(texts);
  TakeRows(std::move(rows));
}

void MailList::ShowRowsOf(const MailList& source, std::vector<std::uint32_t> textRows) {
  assert(&source != this);
  Rows rows;
  if (!textRows.empty()) {
    for (std::uint32_t& row : textRows) row = static_cast<std::uint32_t>(source.TextRow(row));
    rows.checked = RowSet(textRows.size());
    rows.texts = source.rows_.texts;
    rows.textRows = std::move(textRows);
  }
  TakeRows(std::move(rows));
}

bool MailList::Append(std::string_view number, std::string_view title) {
  assert(observers_.empty());
  MailTexts& texts = OwnTexts();
  if (!texts.Append(number, title)) return false;
  rows_.checked.PushBack(false);
  return true;
}

MailTexts& MailList::OwnTexts() {
  constexpr long kOwners = 2;  // rows_ and ownTexts_
  if (ownTexts_ && rows_.texts == ownTexts_ && ownTexts_.use_count() == kOwners) return *ownTexts_;
  auto texts = std::make_shared<MailTexts>();
  for (size_t row = 0; row < Size(); ++row) texts->Append(Number(row), Title(row));
  rows_.texts = texts;
  rows_.textRows.clear();
  ownTexts_ = std::move(texts);
  return *ownTexts_;
}

void MailList::SetChecked(size_t row, bool checked) {
  if (!rows_.checked.Set(row, checked)) return;
  RefreshHeader();
  if (bulkDepth_ > 0) {
    bulkChanged_ = true;
  } else {
    Tell([row](MailListObserver& observer) { observer.CheckChanged(row); });
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

void MailList::UncheckRange(size_t first, size_t last) {
  if (rows_.checked.RemoveRange(first, last)) TellChecksChanged();
}

void MailList::CheckRows(const RowSet& rows) {
  if (rows_.checked.AddAll(rows)) TellChecksChanged();
}

void MailList::MarkRequested(size_t first, size_t last) {
  const BulkChange change(*this, Header::kStays);
  if (rows_.requested.Rows() != Size()) rows_.requested = RowSet(Size());
  if (rows_.requested.AddRange(first, last)) bulkChanged_ = true;
}

void MailList::TakeBackRequested(size_t first, size_t last) {
  const BulkChange change(*this);
  CheckRange(first, last);
  if (rows_.requested.Rows() == Size() && rows_.requested.RemoveRange(first, last)) {
    bulkChanged_ = true;
  }
}

void MailList::TellChecksChanged() {
  RefreshHeader();
  if (bulkDepth_ > 0) {
    bulkChanged_ = true;
  } else {
    Tell([](MailListObserver& observer) { observer.ChecksChanged(); });
  }
}

void MailList::EndBulkChange() {
  if (--bulkDepth_ > 0 || !std::exchange(bulkChanged_, false)) return;
  TellChecksChanged();
}

std::string MailList::TitleHeader() const {
  const size_t total = Size() > 0 ? Size() : totalInHeader_;
  return "Mail Title [" + std::to_string(checkedInHeader_) + "/" + std::to_string(total) + "]";
}

}  // namespace brindle
