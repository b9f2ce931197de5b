#pragma once
// The mails of one server's list: a number (kept as text), a title and a check for each row, and
// whether it was requested. The
// texts themselves are in MailTexts, which lists can share: the results of a search are row numbers
// over the texts of the list that was searched, with checks of their own. Rows count from 0.
// Observers are told about every change.

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mail/mail_texts.h"
#include "mail/row_set.h"

namespace brindle {

class MailListObserver {
 public:
  virtual ~MailListObserver() = default;
  // All rows are about to be replaced, and then: have been.
  virtual void RowsAboutToBeReplaced() {}
  virtual void RowsReplaced() {}
  // The check of one row has changed.
  virtual void CheckChanged(size_t /*row*/) {}
  // The checks of any number of rows have changed.
  virtual void ChecksChanged() {}
};

class MailList {
 public:
  MailList() = default;
  MailList(const MailList&) = delete;
  MailList& operator=(const MailList&) = delete;

  // The observer is not owned and must outlive the list or its observing.
  void Observe(MailListObserver& observer) { observers_.push_back(&observer); }
  void StopObserving(MailListObserver& observer) { std::erase(observers_, &observer); }

  // Removes all rows.
  void Clear() { TakeRows(Rows()); }
  // The same, but the header goes on showing the old total until rows come.
  void ClearBelowHeader();

  // Takes over all rows of `other`, with their checks; `other` is left empty. The observer and the
  // generation stay this list's own. A list that is observed is filled in this way.
  void Replace(MailList& other);

  // Takes over all rows of `other`, with their checks, and leaves them there too. The texts are
  // shared.
  void CopyFrom(const MailList& other) { TakeRows(other.rows_); }

  // Replaces all rows by those of `texts`, none of them checked.
  void SetTexts(std::shared_ptr<const MailTexts> texts);

  // Replaces all rows by the given rows of `source`, none of them checked. The texts are shared,
  // not copied, and stay as they are whatever becomes of `source`.
  // REQUIRES: rows are in ascending order, each below source.Size(); source is another list.
  void ShowRowsOf(const MailList& source, std::vector<std::uint32_t> rows);

  // Adds one row, not checked, at the end. False when the row was refused because the texts would
  // pass 4 GiB. REQUIRES: nobody observes this list; the texts are no part of this list, and such
  // as MailTexts takes.
  bool Append(std::string_view number, std::string_view title);

  size_t Size() const { return rows_.checked.Rows(); }
  const RowSet& Checked() const { return rows_.checked; }
  size_t CheckedCount() const { return rows_.checked.Count(); }

  // What stands above the titles: "Mail Title [checked/total]". It follows every change but those
  // under a BulkChange that leaves it alone.
  std::string TitleHeader() const;

  // Changes whenever all rows are removed or replaced: a loop that lets window events run compares
  // it to notice that it walks another list.
  std::uint64_t Generation() const { return generation_; }

  // The texts of a row; valid until the rows change. REQUIRES: row < Size().
  std::string_view Number(size_t row) const { return rows_.texts->Number(TextRow(row)); }
  std::string_view Title(size_t row) const { return rows_.texts->Title(TextRow(row)); }

  // REQUIRES: row < Size().
  bool IsChecked(size_t row) const { return rows_.checked.Contains(row); }
  void SetChecked(size_t row, bool checked);

  // Rows that were asked for and did not come back. They do not bear on the checks.
  bool IsRequested(size_t row) const {
    return row < rows_.requested.Rows() && rows_.requested.Contains(row);
  }
  // REQUIRES: first <= last < Size().
  void MarkRequested(size_t first, size_t last);
  // They are checked again instead.
  void TakeBackRequested(size_t first, size_t last);

  // The bulk changes: whatever they do, the observer is told once, and not at all when nothing
  // changed. REQUIRES: first <= last < Size(); rows.Rows() == Size().
  void CheckAll();
  void UncheckAll();
  void CheckRange(size_t first, size_t last);
  void UncheckRange(size_t first, size_t last);
  void CheckRows(const RowSet& rows);

  // The first checked row that is not before `from`; nothing when there is none. One checked row in
  // a million is found in microseconds.
  std::optional<size_t> NextChecked(size_t from) const { return rows_.checked.Next(from); }

  // While one of these lives, changed checks are collected and reported by one ChecksChanged.
  enum class Header { kFollows, kStays };
  class BulkChange {
   public:
    explicit BulkChange(MailList& list, Header header = Header::kFollows)
        : list_(list), header_(header) {
      ++list_.bulkDepth_;
      if (header_ == Header::kStays) ++list_.headerHeld_;
    }
    ~BulkChange() {
      list_.EndBulkChange();
      if (header_ == Header::kStays) --list_.headerHeld_;
    }
    BulkChange(const BulkChange&) = delete;
    BulkChange& operator=(const BulkChange&) = delete;

   private:
    MailList& list_;
    Header header_;
  };

  // For searching: the texts that the rows are taken from, null when there are no rows, and the
  // row of the texts for each row of this list, ascending; empty when they are the same.
  const MailTexts* Texts() const { return rows_.texts.get(); }
  const std::vector<std::uint32_t>& TextRows() const { return rows_.textRows; }

 private:
  struct Rows {
    std::shared_ptr<const MailTexts> texts;
    std::vector<std::uint32_t> textRows;
    RowSet checked;
    RowSet requested;  // without room for rows until the first is requested
  };

  size_t TextRow(size_t row) const {
    assert(row < Size());
    return rows_.textRows.empty() ? row : rows_.textRows[row];
  }
  // The texts, made ready to take a row: this list's own, and nobody else's.
  MailTexts& OwnTexts();
  void TakeRows(Rows rows, size_t totalInHeader = 0);
  // Calls what(observer) for each of them.
  template <typename What>
  void Tell(What what) {
    for (MailListObserver* observer : observers_) what(*observer);
  }
  void RefreshHeader() {
    if (headerHeld_ == 0) checkedInHeader_ = CheckedCount();
  }
  void TellChecksChanged();
  void EndBulkChange();

  Rows rows_;
  std::shared_ptr<MailTexts> ownTexts_;  // rows_.texts, if they are still being filled
  std::uint64_t generation_ = 0;
  std::vector<MailListObserver*> observers_;
  size_t totalInHeader_ = 0;  // while there are no rows
  size_t checkedInHeader_ = 0;
  int headerHeld_ = 0;
  int bulkDepth_ = 0;
  bool bulkChanged_ = false;
};

}  // namespace brindle
