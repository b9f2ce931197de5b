#include "mail/mail_texts.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/letter_case.h"
#include "base/text.h"

namespace brindle {
namespace {

bool IsOfNumber(char c) {
  return c != '.' && c != ')' && c != '(' && c != '[' && c != ']' && c != '\t' && c != '\n';
}

}  // namespace

MailTexts::MailTexts(MailRows rows) : rows_(std::move(rows)) {
  ClearSlack();
  if (MayHoldOdd(rows_.leads)) NoteOddTitles(0);
}

bool MailTexts::Append(std::string_view number, std::string_view title) {
  FlatArray<char>& text = rows_.text;
  const size_t begin = text.Size();
  if (number.size() > kMostText - begin || title.size() + 2 > kMostText - begin - number.size()) {
    return false;
  }
  rows_.begins.PushBack(static_cast<std::uint32_t>(begin));
  text.Append(number.data(), number.size());
  text.PushBack('\t');
  text.Append(title.data(), title.size());
  text.PushBack('\n');
  ClearSlack();
  IsValidUtf8(title) ? NoteOddTitles(begin) : NoteOddTitle(Size() - 1);
  return true;
}

void MailTexts::ClearSlack() {
  rows_.text.MakeRoom(kSlack);
  std::memset(rows_.text.Data() + rows_.text.Size(), 0, kSlack);
}

void MailTexts::NoteOddTitles(size_t from) {
  const std::string_view text = Text();
  const std::uint32_t* begins = Begins();
  for (size_t at = FindOdd(text, from); at < text.size(); at = FindOdd(text, from)) {
    const size_t next = static_cast<size_t>(std::upper_bound(begins, begins + Size(), at) - begins);
    NoteOddTitle(next - 1);
    from = next < Size() ? begins[next] : text.size();
  }
}

void MailTexts::NoteOddTitle(size_t row) {
  odd_.push_back({static_cast<std::uint32_t>(row), LowerCase(Title(row))});
}

std::string_view MailTexts::Number(size_t row) const {
  const char* const begin = rows_.text.Data() + rows_.begins[row];
  const char* end = begin;
  while (IsOfNumber(*end)) ++end;
  return {begin, static_cast<size_t>(end - begin)};
}

std::string_view MailTexts::Title(size_t row) const {
  const std::string_view number = Number(row);
  const char* const end = rows_.text.Data() + rows_.text.Size();
  const char* title = number.data() + number.size();
  while (*title != '\t' && *title != '\n') ++title;
  if (*title == '\t') ++title;
  const void* lf = std::memchr(title, '\n', static_cast<size_t>(end - title));
  return {title, static_cast<size_t>(static_cast<const char*>(lf) - title)};
}

}  // namespace brindle
