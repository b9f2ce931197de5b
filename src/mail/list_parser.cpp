#include "mail/list_parser.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/text.h"
#include "base/utf8.h"

namespace brindle {
namespace {

constexpr size_t kHeaderLines = 12;
constexpr std::string_view kTabbedListMark = "ballistic mail server : ";
constexpr std::string_view kHeaderWord = "send";
constexpr std::string_view kNumberMarks = ".)([]";

bool IsMark(char c) { return c == '.' || c == ')' || c == '(' || c == '[' || c == ']'; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string RepairUtf8(std::string_view bytes) {
  constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
  std::string text;
  while (!bytes.empty()) {
    const size_t valid = ValidUtf8Prefix(bytes);
    text.append(bytes.substr(0, valid));
    bytes.remove_prefix(valid);
    if (bytes.empty()) break;
    text.append(kReplacement);
    bytes.remove_prefix(1);
  }
  return text;
}

std::string_view WithoutFirstCharacter(std::string_view word) {
  size_t length = 1;
  while (length < word.size() && IsTrailByte(word[length])) ++length;
  return word.substr(length);
}

}  // namespace

void ListParser::Line(std::string_view line) {
  ++lineNumber_;
  if (lineNumber_ == 1 && line.find(kTabbedListMark) != std::string_view::npos) separator_ = '\t';
  if (lineNumber_ <= kHeaderLines) HeaderLine(line);
  MailLine(line);
}

void ListParser::HeaderLine(std::string_view line) {
  // Header words are cut at blanks even where the mails are cut at tabs.
  const size_t firstEnd = line.find(' ');
  if (firstEnd == std::string_view::npos) return;
  const size_t secondEnd = line.find(' ', firstEnd + 1);
  if (secondEnd == std::string_view::npos) return;
  const std::string_view second = line.substr(firstEnd + 1, secondEnd - firstEnd - 1);
  if (!EqualsIgnoringCase(second, kHeaderWord)) return;
  const std::string first = Decode(line.substr(0, firstEnd));
  // An indented line has no first character to take away, so the handle stays as it is.
  if (!first.empty()) handle_ = WithoutFirstCharacter(first);
}

void ListParser::MailLine(std::string_view line) {
  // Most lines that are no mails (tags, text, blank lines) end here, at their first byte.
  if (line.empty()) return;
  const char c = line.front();
  if (!IsDigit(c) && !IsMark(c) && c != ' ' && c != '+' && c != '-') return;

  // Most mails begin with "12 " or "12. ": digits, a mark perhaps, and the separator.
  size_t digits = 0;
  while (digits < line.size() && IsDigit(line[digits])) ++digits;
  const size_t fieldEnd = digits + (digits < line.size() && IsMark(line[digits]) ? 1 : 0);
  if (digits > 0 && fieldEnd < line.size() && line[fieldEnd] == separator_) {
    const std::string_view number = line.substr(0, digits);
    const std::string_view rest = line.substr(fieldEnd + 1);
    const bool plain = encoding_ == LineEncoding::kUtf8 && separator_ == ' ' && !rest.empty() &&
                       rest.front() != ' ' && rest.back() != ' ';
    // A list that is full refuses the row; the rest of the file is passed over in the same way.
    plain ? texts_.AppendPadded(number, rest) : texts_.Append(number, TitleIn(rest));
    return;
  }

  const size_t end = std::min(line.find(separator_), line.size());
  const std::string_view number = NumberIn(line.substr(0, end));
  if (number.empty()) return;
  texts_.Append(number, TitleIn(line.substr(std::min(end + 1, line.size()))));
}

std::string_view ListParser::NumberIn(std::string_view field) {
  // The usual forms ("12", "12.", "(12)", "[12]") need no copy.
  std::string_view inner = field;
  while (!inner.empty() && IsMark(inner.front())) inner.remove_prefix(1);
  while (!inner.empty() && IsMark(inner.back())) inner.remove_suffix(1);
  if (IsAllDigits(inner)) return inner;

  number_ = RemoveChars(field, kNumberMarks);
  return IsNumericText(number_) ? std::string_view(number_) : std::string_view();
}

std::string_view ListParser::TitleIn(std::string_view rest) {
  // The fields after the first, joined with blanks, are the rest of the line with each separator
  // made a blank.
  if (encoding_ != LineEncoding::kUtf8 && !IsAscii(rest)) {
    title_ = Decode(rest);
  } else if (separator_ != ' ' && rest.find(separator_) != std::string_view::npos) {
    title_ = rest;
  } else {
    return TrimBlanks(rest);
  }
  if (separator_ != ' ') std::replace(title_.begin(), title_.end(), separator_, ' ');
  return TrimBlanks(title_);
}

std::string ListParser::Decode(std::string_view bytes) const {
  switch (encoding_) {
    case LineEncoding::kUtf8:
      break;
    case LineEncoding::kRepairedUtf8:
      return RepairUtf8(bytes);
    case LineEncoding::kWindows1252:
      return Utf8FromWindows1252(bytes);
  }
  return std::string(bytes);
}

}  // namespace brindle
