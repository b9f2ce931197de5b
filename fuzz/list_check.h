#pragma once
// Judges the list reader on any bytes: reads them in small blocks and in one, and compares both
// with a slow reading that follows the rules word by word.

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/encoding.h"
#include "base/text.h"
#include "mail/list_reader.h"
#include "support/memory.h"

namespace brindle {

struct PlainList {
  std::vector<std::pair<std::string, std::string>> mails;
  std::optional<std::string> handle;
  friend bool operator==(const PlainList&, const PlainList&) = default;
};

inline PlainList PlainFrom(const MailList& list, const ReadResult& result) {
  PlainList plain;
  plain.handle = result.handle;
  for (size_t row = 0; row < list.Size(); ++row) {
    plain.mails.emplace_back(list.Number(row), list.Title(row));
  }
  return plain;
}

inline std::string SlowDecode(std::string_view bytes) {
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

inline std::vector<std::string> SlowLines(const std::string& text) {
  std::vector<std::string> lines(1);
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') {
      lines.back() += text[i];
    } else if (text[i] == '\r' || i == 0 || text[i - 1] != '\r') {
      lines.emplace_back();
    }
  }
  return lines;
}

inline PlainList SlowReading(std::string_view bytes) {
  PlainList plain;
  std::string separator = " ";
  size_t n = 0;
  for (const std::string& line : SlowLines(SlowDecode(bytes))) {
    ++n;
    if (n == 1 && line.find("ballistic mail server : ") != std::string::npos) separator = "\t";
    const auto words = Split(line, " ");
    if (n < 13 && words.size() > 2 && LowerCase(words[1]) == "send" && !words[0].empty()) {
      size_t second = 1;
      while (second < words[0].size() && CharacterCount(words[0].substr(second, 1)) == 0) ++second;
      plain.handle = words[0].substr(second);
    }
    const auto fields = Split(line, separator);
    const std::string number = RemoveChars(fields[0], ".)([]");
    if (!IsNumericText(number)) continue;
    plain.mails.emplace_back(number, TrimBlanks(JoinFrom(fields, 1, " ")));
  }
  return plain;
}

// Empty when all readings of `bytes` agree, else what is wrong.
inline std::string WrongWithReading(std::string_view bytes) {
  const PlainList expected = SlowReading(bytes);
  for (const size_t block : {size_t{1}, size_t{7}, size_t{4096}}) {
    MemorySource source(bytes, block);
    MailList list;
    ReadLimits limits;
    limits.block = block;
    const ReadResult result = ReadList(source, list, {}, limits);
    if (result.status != ReadStatus::kComplete) return "not complete";
    if (list.CheckedCount() != 0 || list.NextChecked(0)) return "checked rows";
    for (size_t row = 0; row < list.Size(); ++row) {
      if (list.Title(row).find_first_of("\r\n") != std::string_view::npos)
        return "line end in title";
      if (!IsValidUtf8(list.Title(row))) return "title is not UTF-8";
      if (!IsNumericText(list.Number(row))) return "number is not numeric";
    }
    if (PlainFrom(list, result) != expected) {
      return "block size " + std::to_string(block) + " reads otherwise";
    }
  }
  return "";
}

}  // namespace brindle
