#pragma once
// Reads the lines of a server's list file: which line is a mail, what are its number and title, and
// which header line names the server. Knows nothing of files, line ends and byte-order marks.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "mail/mail_texts.h"

namespace brindle {

// What the bytes of the lines are.
enum class LineEncoding {
  kUtf8,          // valid UTF-8
  kRepairedUtf8,  // UTF-8 with faults; each broken byte is read as U+FFFD
  kWindows1252,
};

class ListParser {
 public:
  // Rows are appended to `texts`, which must outlive the parser.
  ListParser(MailTexts& texts, LineEncoding encoding) : texts_(texts), encoding_(encoding) {}

  // Takes the next line of the file, without its line end. REQUIRES: MailTexts::kSlack bytes behind
  // it may be read.
  void Line(std::string_view line);

  // The server handle that the header lines named last; nothing when none did.
  const std::optional<std::string>& Handle() const { return handle_; }

 private:
  void HeaderLine(std::string_view line);
  void MailLine(std::string_view line);
  // The mail number that `field` spells; empty when it is none.
  std::string_view NumberIn(std::string_view field);
  // The title that follows the first separator; points into `rest` or into title_.
  std::string_view TitleIn(std::string_view rest);
  std::string Decode(std::string_view bytes) const;

  MailTexts& texts_;
  LineEncoding encoding_;
  size_t lineNumber_ = 0;  // of the line at hand, from 1
  char separator_ = ' ';
  std::optional<std::string> handle_;
  std::string number_;  // reused from line to line
  std::string title_;
};

}  // namespace brindle
