#include "mail/list_parser.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/text.h"
#include "base/utf8.h"
#include "mail/byte_kernels.h"

namespace brindle {
namespace {

constexpr size_t kMasks = 64;
constexpr size_t kUsualLines = 3;  // that end in the stretch of one mask, at most
constexpr size_t kHeaderLines = 12;
constexpr std::string_view kTabbedListMark = "ballistic mail server : ";
constexpr std::string_view kHeaderWord = "send";
constexpr std::string_view kNumberMarks = ".)([]";

bool IsMark(char c) { return c == '.' || c == ')' || c == '(' || c == '[' || c == ']'; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view WithoutFirstCharacter(std::string_view word) {
  size_t length = 1;
  while (length < word.size() && IsTrailByte(word[length])) ++length;
  return word.substr(length);
}

// Writes down which bits are set, in order, and returns how many: up to the usual number without a
// branch, which would be guessed wrong half of the time. REQUIRES: room for kUsualLines more.
size_t PlacesIn(const std::uint64_t* mask, size_t masks, std::uint32_t* places) {
  size_t count = 0;
  for (size_t m = 0; m < masks; ++m) {
    std::uint64_t bits = mask[m];
    const auto next = [&] {
      places[count] = static_cast<std::uint32_t>(m * kMaskBytes) +
                      static_cast<std::uint32_t>(std::countr_zero(bits));
      count += bits != 0 ? 1U : 0U;
      bits &= bits - 1;
    };
    for (size_t i = 0; i < kUsualLines; ++i) next();
    while (bits != 0) next();
  }
  return count;
}

// The number of ASCII digits at the beginning of eight bytes.
size_t LeadingDigits(const char* text) {
  std::uint64_t word = 0;
  if constexpr (std::endian::native == std::endian::big) {
    return static_cast<size_t>(std::find_if_not(text, text + sizeof word, IsDigit) - text);
  }
  std::memcpy(&word, text, sizeof word);
  word ^= 0x3030303030303030U;  // makes 0 to 9 of the digits
  const std::uint64_t others = (((word & 0x7F7F7F7F7F7F7F7FU) + 0x7676767676767676U) | word);
  return static_cast<size_t>(std::countr_zero(others & 0x8080808080808080U)) / 8;
}

void FillUp(char* from, const char* to) { std::memset(from, '\n', static_cast<size_t>(to - from)); }

}  // namespace

void ListParser::Parse() {
  FlatArray<char>& text = rows_.text;
  text.MakeRoom(kMaskBytes + 1);
  // A CR at the end waits for what follows, which may be its LF.
  text.Data()[text.Size()] = '\n';
  std::uint64_t mask[kMasks];
  std::uint32_t ends[kMasks * kMaskBytes + kUsualLines];
  for (size_t at = searched_; at < text.Size(); at += kMasks * kMaskBytes) {
    const size_t masks = std::min(kMasks, (text.Size() - at + kMaskBytes - 1) / kMaskBytes);
    Kernels().lineEnds(text.Data() + at, mask, masks);
    const size_t count = PlacesIn(mask, masks, ends);
    for (size_t i = 0; i < count && at + ends[i] < text.Size(); ++i) CutAt(at + ends[i]);
  }
  DropTheRest();
}

void ListParser::Finish() {
  rows_.text.PushBack('\n');
  Parse();
}

void ListParser::CutAt(size_t end) {
  const FlatArray<char>& text = rows_.text;
  const bool crLf = end > begin_ && text[end] == '\n' && text[end - 1] == '\r';
  if (!dropping_) Line(begin_, crLf ? end - 1 : end);
  dropping_ = false;
  begin_ = end + 1;
}

void ListParser::DropTheRest() {
  FlatArray<char>& text = rows_.text;
  size_t left = text.Size() - begin_;
  if (left > longestLine_) {
    if (!dropping_) {
      const std::string_view line(text.Data() + begin_, left);
      Line(begin_, begin_ + CharacterBegin(line, longestLine_));
    }
    dropping_ = true;
  }
  const size_t waiting = left > 0 && text.Back() == '\r' ? 1 : 0;
  if (dropping_) left = waiting;
  std::memmove(text.Data() + kept_, text.Data() + text.Size() - left, left);
  text.Shrink(kept_ + left);
  begin_ = kept_;
  searched_ = text.Size() - waiting;
}

void ListParser::Line(size_t begin, size_t end) {
  ++lineNumber_;
  char* const line = rows_.text.Data() + begin;
  const size_t size = end - begin;
  if (lineNumber_ <= kHeaderLines) HeaderLine({line, size});
  const size_t row = MailLine(line, size);
  if (row == kNoMail) return FillUp(line, line + size + 1);
  rows_.begins.PushBack(static_cast<std::uint32_t>(begin + row));
  kept_ = end + 1;
}

void ListParser::HeaderLine(std::string_view line) {
  if (lineNumber_ == 1 && line.find(kTabbedListMark) != std::string_view::npos) separator_ = '\t';
  // Header words are cut at blanks even where the mails are cut at tabs.
  const size_t firstEnd = line.find(' ');
  if (firstEnd == std::string_view::npos) return;
  const size_t secondEnd = line.find(' ', firstEnd + 1);
  if (secondEnd == std::string_view::npos) return;
  const std::string_view second = line.substr(firstEnd + 1, secondEnd - firstEnd - 1);
  if (!EqualsIgnoringCase(second, kHeaderWord)) return;
  // An indented line has no first character to take away, so the handle stays as it is.
  if (firstEnd > 0) handle_ = WithoutFirstCharacter(line.substr(0, firstEnd));
}

size_t ListParser::MailLine(char* line, size_t size) const {
  // Most mails begin with "12 " or "12. ": digits, a mark perhaps, and the separator.
  size_t field = LeadingDigits(line);
  const bool digits = field > 0;
  if (IsMark(line[field])) ++field;
  if (separator_ != ' ' || !digits || field + 1 >= size || line[field] != ' ' ||
      line[field + 1] == ' ' || line[size - 1] == ' ') {
    return UnusualMailLine(line, size);
  }
  line[field] = '\t';
  line[size] = '\n';
  return 0;
}

size_t ListParser::UnusualMailLine(char* line, size_t size) const {
  // Most lines that are no mails (tags, text, blank lines) end here, at their first byte.
  if (size == 0) return kNoMail;
  const char c = line[0];
  if (!IsDigit(c) && !IsMark(c) && c != ' ' && c != '+' && c != '-') return kNoMail;
  const std::string_view all(line, size);
  const size_t fieldEnd = std::min(all.find(separator_), size);
  const std::string number = RemoveChars(all.substr(0, fieldEnd), kNumberMarks);
  if (!IsNumericText(number)) return kNoMail;
  // The fields after the first, joined with blanks, are the rest of the line with each separator
  // made a blank.
  std::replace(line + fieldEnd, line + size, separator_, ' ');
  const std::string_view title = TrimBlanks(all.substr(fieldEnd));
  char* const end = line + size + 1;
  if (title.empty()) {
    char* const row = end - 1 - number.size();
    number.copy(row, number.size());
    end[-1] = '\n';
    FillUp(line, row);
    return static_cast<size_t>(row - line);
  }
  char* const titleBegin = line + (title.data() - line);
  char* const row = titleBegin - 1 - number.size();
  number.copy(row, number.size());
  titleBegin[-1] = '\t';
  FillUp(line, row);
  FillUp(titleBegin + title.size(), end);
  return static_cast<size_t>(row - line);
}

}  // namespace brindle
