// Any bytes to the list reader, in small blocks and in one; beside a slow reading of the same bytes
// that follows the rules word by word.

#include <algorithm>

#include "base/encoding.h"
#include "fuzz/input.h"
#include "support/mail_stage.h"
#include "support/memory.h"

using namespace brindle;
using fuzz::Require;

namespace {

std::string SlowDecode(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) {
    return Utf8FromUtf16(bytes.substr(2), ByteOrder::kLittleEndian);
  }
  if (bytes.starts_with("\xFE\xFF")) return Utf8FromUtf16(bytes.substr(2), ByteOrder::kBigEndian);
  if (!bytes.starts_with("\xEF\xBB\xBF")) return DecodeReceived(bytes);
  std::string text;
  for (bytes.remove_prefix(3); !bytes.empty();) {
    const size_t valid = ValidUtf8Prefix(bytes);
    text += bytes.substr(0, valid);
    if (valid < bytes.size()) text += "\uFFFD";
    bytes.remove_prefix(std::min(valid + 1, bytes.size()));
  }
  return text;
}

// What is read: "12=Title|13=Another to handle".
std::string SlowReading(std::string_view bytes) {
  std::string rows;
  std::string handle;
  std::string separator = " ";
  size_t n = 0;
  for (const std::string& line : fuzz::LinesOf(SlowDecode(bytes))) {
    ++n;
    if (n == 1 && line.find("ballistic mail server : ") != std::string::npos) separator = "\t";
    const auto words = Split(line, " ");
    if (n < 13 && words.size() > 2 && LowerCase(words[1]) == "send" && !words[0].empty()) {
      size_t second = 1;
      while (second < words[0].size() && CharacterCount(words[0].substr(second, 1)) == 0) ++second;
      handle = " to " + std::string(words[0].substr(second));
    }
    const auto fields = Split(line, separator);
    const std::string number = RemoveChars(fields[0], ".)([]");
    if (!IsNumericText(number)) continue;
    rows += (rows.empty() ? "" : "|") + number + "=";
    rows += TrimBlanks(JoinFrom(fields, 1, " "));
  }
  return rows + handle;
}

}  // namespace

void fuzz::Try(Bytes input) {
  const std::string_view bytes = input.Rest();
  const std::string expected = SlowReading(bytes);
  for (const size_t block : {size_t{1}, size_t{7}, size_t{4096}}) {
    MemorySource source(bytes, block);
    MailList list;
    ReadLimits limits;
    limits.block = block;
    const ReadResult result = ReadList(source, list, {}, limits);
    Require(result.status == ReadStatus::kComplete, "not complete");
    Require(list.CheckedCount() == 0 && !list.NextChecked(0), "checked rows");
    const std::string read = RowsOf(list) + (result.handle ? " to " + *result.handle : "");
    Require(read == expected, "another reading", read);
    Require(read.find_first_of("\r\n") == std::string::npos, "a line end in a row", read);
    Require(IsValidUtf8(read), "not UTF-8", read);
  }
}
