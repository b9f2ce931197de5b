#pragma once
// Makes rows of the lines of a server's list file, in the place where they stand: cuts the text
// into lines (at LF, CR or CR LF), tells which line is a mail, what are its number and title, and
// which header line names the server. Knows nothing of files and encodings.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "mail/mail_texts.h"

namespace brindle {

class ListParser {
 public:
  // What is beyond `longestLine` bytes of one line is passed over. `rows` must outlive the parser;
  // its text is appended to, in UTF-8, between the calls of Parse.
  ListParser(MailRows& rows, size_t longestLine) : rows_(rows), longestLine_(longestLine) {}

  // Makes rows of the lines that are complete by now. Text that gave no row goes away.
  void Parse();
  // The same for the last line, if it has no end of its own.
  void Finish();

  // The server handle that the header lines named last; nothing when none did.
  const std::optional<std::string>& Handle() const { return handle_; }

 private:
  // Ends the line at hand at this place.
  void CutAt(size_t end);
  // Takes one line; at `end` is its line end, or anything that is not needed any more.
  void Line(size_t begin, size_t end);
  void HeaderLine(std::string_view line);
  // These turn a line of `size` bytes into a row, if it is a mail. They return where in the line
  // the row begins, kNoMail for none. (An optional costs more here than all the rest.)
  static constexpr size_t kNoMail = std::string_view::npos;
  size_t MailLine(char* line, size_t size) const;
  size_t UnusualMailLine(char* line, size_t size) const;
  // Lets the text end behind the last row and the line that is not complete.
  void DropTheRest();

  MailRows& rows_;
  size_t longestLine_;
  size_t begin_ = 0;       // of the line that is not complete
  size_t searched_ = 0;    // no line ends between begin_ and this place
  size_t kept_ = 0;        // the end of the last row
  bool dropping_ = false;  // the rest of an overlong line is being passed over
  size_t lineNumber_ = 0;  // of the line at hand, from 1
  char separator_ = ' ';
  std::optional<std::string> handle_;
};

}  // namespace brindle
