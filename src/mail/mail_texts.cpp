#include "mail/mail_texts.h"

#include "mail/byte_kernels.h"
#include "mail/lower_titles.h"

namespace brindle {

bool MailTexts::Append(std::string_view number, std::string_view title) {
  if (number.size() > kMostText - numbers_.Size()) return false;
  if (title.size() > kMostText - titles_.Size()) return false;
  numberEnds_.MakeRoom(1);
  titleEnds_.MakeRoom(1);
  numbers_.MakeRoom(number.size());
  titles_.Append(title.data(), title.size());
  numbers_.Append(number.data(), number.size());
  numberEnds_.PushBack(static_cast<std::uint32_t>(numbers_.Size()));
  titleEnds_.PushBack(static_cast<std::uint32_t>(titles_.Size()));
  return true;
}

void MailTexts::Settle() {
  const size_t size = titles_.Size() - settledBytes_;
  lower_.MakeRoom(size + kSlack);
  const char* from = titles_.Data() + settledBytes_;
  char* to = lower_.Data() + lower_.Size();
  if (!HasOwnEnds() && (size == 0 || Kernels().lowerAscii(from, to, size))) {
    lower_.Added(size);
    settledRows_ = Size();
  } else {
    while (settledRows_ < Size()) SettleRow(settledRows_++);
    lower_.MakeRoom(kSlack);
  }
  std::memset(lower_.Data() + lower_.Size(), 0, kSlack);
  settledBytes_ = titles_.Size();
}

void MailTexts::SettleRow(size_t row) {
  AppendLowerCase(Title(row), lower_);
  if (!HasOwnEnds()) {
    if (lower_.Size() == titleEnds_[row]) return;
    lowerEnds_.Reserve(titleEnds_.Size());
    for (size_t before = 0; before < row; ++before) lowerEnds_.PushBack(titleEnds_[before]);
  }
  lowerEnds_.PushBack(lower_.Size());
}

void MailTexts::ReserveFor(size_t bytes) {
  // Of a usual line; shorter ones only mean that the arrays grow while they are filled.
  constexpr size_t kLine = 48;
  constexpr size_t kNumber = 6;
  const size_t rows = bytes / kLine;
  numbers_.Reserve(rows * kNumber);
  numberEnds_.Reserve(rows);
  titleEnds_.Reserve(rows);
  titles_.Reserve(bytes);
  lower_.Reserve(bytes + kSlack);
}

void MailTexts::GiveBackMemory() {
  // What was never written costs nothing where the system gives memory page by page; elsewhere
  // shrinking may copy, which is not worth it for less than half of the room.
  const auto shrink = [](FlatArray<char>& text, size_t slack) {
    const size_t needed = text.Size() + slack;
    if (needed < text.Capacity() / 2) text.GiveBack(needed);
  };
  shrink(titles_, 0);
  shrink(lower_, kSlack);
}

}  // namespace brindle
