#pragma once
// The text of an INI file: sections in square brackets, lines of key, equals sign and value. Reads
// and changes single values and keeps everything else (order, comments, unknown lines, line ends)
// byte for byte. Section and key names match without regard to case; the first match wins.

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

namespace brindle {

enum class ValueForm {
  kReadsBack,  // put into quotes where reading would change the value otherwise
  kPlain,      // written as it is; nothing but blanks is a value, as of a path that was cleared
};

// One value on its way into the file.
struct Setting {
  std::string section;
  std::string key;
  std::string value;
  ValueForm form = ValueForm::kReadsBack;
};

class SettingsText {
 public:
  // Characters of a value that reading returns at most.
  static constexpr size_t kLongestValue = 999;

  // `bytes` as they stand in a file: a byte-order mark is passed over, UTF-16 becomes UTF-8, and
  // values that are not valid UTF-8 are read as Windows-1252.
  explicit SettingsText(std::string_view bytes);
  SettingsText(SettingsText&&) = default;
  SettingsText& operator=(SettingsText&&) = default;

  // The value, without blanks and one pair of quotes around it. `otherwise` stands in for a value
  // that is missing or empty.
  std::string Read(std::string_view section, std::string_view key, std::string_view otherwise = "",
                   ValueForm form = ValueForm::kReadsBack) const;
  // As a number: the leading numeric part, 0 when there is none.
  long long ReadNumber(std::string_view section, std::string_view key,
                       std::string_view otherwise) const;

  // Sets the value, in place or as a new line at the end of its section. Section, key and value end
  // at their first CR, LF or NUL; names that the format cannot hold change nothing.
  void Write(const Setting& setting);

  std::string Text() const;

 private:
  std::string ValueIn(std::string_view section, std::string_view key, ValueForm form) const;

  struct Line {
    std::string text;
    std::string_view end;  // "\r\n", "\n", "\r", or nothing for an unfinished last line
  };
  // A list, so that a place in it outlasts the lines that are put in between.
  using Lines = std::list<Line>;
  struct Section {
    Lines::iterator lastLine;  // its last line with a key, or its heading
    std::unordered_map<std::string, Lines::iterator> keys;
  };

  void Index();
  Lines::iterator Insert(Lines::iterator at, std::string text);

  Lines lines_;
  std::string_view lineEnd_;  // what new lines end with
  std::unordered_map<std::string, Section> sections_;
};

// One value out of, or into, the text of a file.
std::string ReadSettingText(std::string_view text, std::string_view section, std::string_view key);
std::string WriteSettingText(std::string_view text, std::string_view section, std::string_view key,
                             std::string_view value);

// "key=value", the value so that it reads back.
std::string SettingLine(std::string_view key, std::string_view value);

// The whole number at the start of `text`, blanks before it passed over; 0 when there is none. A
// number beyond the range of the type becomes its end.
long long LeadingNumber(std::string_view text);

}  // namespace brindle
