#include "settings/settings_text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "base/encoding.h"
#include "base/text.h"
#include "base/utf8.h"

namespace brindle {
namespace {

constexpr std::string_view kSpace = " \t";

std::string_view Trim(std::string_view text) {
  const size_t first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

std::string Name(std::string_view text) { return LowerCase(DecodeReceived(Trim(text))); }

std::optional<std::string> HeadingOf(std::string_view line) {
  line = Trim(WithoutUtf8Mark(line));
  const size_t close = line.find(']');
  if (!line.starts_with('[') || close == std::string_view::npos) return std::nullopt;
  return Name(line.substr(1, close - 1));
}

std::optional<std::string> KeyOf(std::string_view line) {
  const size_t equals = line.find('=');
  if (equals == std::string_view::npos || Trim(line).starts_with(';')) return std::nullopt;
  return Name(line.substr(0, equals));
}

// The part of `text` that holds its first `most` characters.
std::string_view FirstCharacters(std::string_view text, size_t most) {
  return text.substr(0, OffsetOfCharacter(text, most));
}

std::string ValueOf(std::string_view written, ValueForm form) {
  written = FirstLine(written);
  if (form == ValueForm::kReadsBack || !IsBlank(written)) {
    written = Trim(written);
    if (written.size() >= 2 && written.front() == written.back() &&
        (written.front() == '"' || written.front() == '\'')) {
      written = written.substr(1, written.size() - 2);
    }
  }
  return std::string(FirstCharacters(DecodeReceived(written), SettingsText::kLongestValue));
}

std::string Written(std::string_view value, ValueForm form) {
  value = FirstLine(value);
  std::string plain(value);
  const std::string first(FirstCharacters(value, SettingsText::kLongestValue));
  if (form == ValueForm::kPlain || ValueOf(plain, form) == first) return plain;
  return '"' + plain + '"';
}

// A mark in front of a name would be taken for that of the file.
bool HasMark(std::string_view name) { return WithoutUtf8Mark(name).size() < name.size(); }

bool CanBeSection(std::string_view name) {
  return !Trim(name).empty() && !HasMark(name) && name.find(']') == std::string_view::npos;
}

bool CanBeKey(std::string_view name) {
  if (HasMark(name)) return false;
  name = Trim(name);
  return !name.empty() && name.front() != ';' && name.front() != '[' &&
         name.find('=') == std::string_view::npos;
}

// The line end at `at`, empty at the end of the text.
std::string_view LineEndAt(std::string_view text, size_t at) {
  for (const std::string_view end : {kCrLf, std::string_view("\n"), std::string_view("\r")}) {
    if (text.substr(at).starts_with(end)) return end;
  }
  return {};
}

}  // namespace

SettingsText::SettingsText(std::string_view bytes) {
  const std::string text = Utf8FromMarked(bytes);
  for (size_t begin = 0; begin < text.size();) {
    const size_t stop = std::min(text.find_first_of("\r\n", begin), text.size());
    lines_.push_back({text.substr(begin, stop - begin), LineEndAt(text, stop)});
    begin = stop + lines_.back().end.size();
  }
  lineEnd_ = lines_.empty() || lines_.front().end.empty() ? kCrLf : lines_.front().end;
  Index();
}

void SettingsText::Index() {
  Section* current = nullptr;
  for (auto line = lines_.begin(); line != lines_.end(); ++line) {
    if (const auto heading = HeadingOf(line->text)) {
      const auto [place, isFirst] = sections_.try_emplace(*heading, Section{line, {}});
      // A section that comes a second time is never looked at.
      current = isFirst ? &place->second : nullptr;
    } else if (const auto key = KeyOf(line->text); key && current != nullptr) {
      current->keys.try_emplace(*key, line);
      current->lastLine = line;
    }
  }
}

std::string SettingsText::Read(std::string_view section, std::string_view key,
                               std::string_view otherwise, ValueForm form) const {
  std::string value = ValueIn(section, key, form);
  return value.empty() ? std::string(otherwise) : value;
}

long long SettingsText::ReadNumber(std::string_view section, std::string_view key,
                                   std::string_view otherwise) const {
  return LeadingNumber(Read(section, key, otherwise));
}

std::string SettingsText::ValueIn(std::string_view section, std::string_view key,
                                  ValueForm form) const {
  const auto found = sections_.find(Name(section));
  if (found == sections_.end()) return "";
  const auto line = found->second.keys.find(Name(key));
  if (line == found->second.keys.end()) return "";
  const std::string_view text = line->second->text;
  return ValueOf(text.substr(text.find('=') + 1), form);
}

void SettingsText::Write(const Setting& setting) {
  const std::string_view section = FirstLine(setting.section);
  const std::string_view key = FirstLine(setting.key);
  if (!CanBeSection(section) || !CanBeKey(key)) return;
  const std::string value = Written(setting.value, setting.form);

  auto found = sections_.find(Name(section));
  if (found == sections_.end()) {
    const auto heading = Insert(lines_.end(), "[" + std::string(section) + "]");
    found = sections_.try_emplace(Name(section), Section{heading, {}}).first;
  }
  auto& [lastLine, keys] = found->second;
  const auto line = keys.find(Name(key));
  if (line == keys.end()) {
    lastLine = Insert(std::next(lastLine), std::string(key) + "=" + value);
    keys.try_emplace(Name(key), lastLine);
    return;
  }
  std::string& text = line->second->text;
  text.replace(text.find('=') + 1, std::string::npos, value);
}

SettingsText::Lines::iterator SettingsText::Insert(Lines::iterator at, std::string text) {
  if (at != lines_.begin() && std::prev(at)->end.empty()) std::prev(at)->end = lineEnd_;
  return lines_.insert(at, {std::move(text), lineEnd_});
}

std::string SettingsText::Text() const {
  std::string text;
  for (const Line& line : lines_) {
    text += line.text;
    text += line.end;
  }
  return text;
}

std::string ReadSettingText(std::string_view text, std::string_view section, std::string_view key) {
  return SettingsText(text).Read(section, key);
}

std::string WriteSettingText(std::string_view text, std::string_view section, std::string_view key,
                             std::string_view value) {
  SettingsText settings(text);
  settings.Write({std::string(section), std::string(key), std::string(value)});
  return settings.Text();
}

std::string SettingLine(std::string_view key, std::string_view value) {
  return std::string(key) + "=" + Written(value, ValueForm::kReadsBack);
}

long long LeadingNumber(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return 0;
  text.remove_prefix(first);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  long long number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::result_out_of_range) {
    using Limits = std::numeric_limits<long long>;
    return text.front() == '-' ? Limits::min() : Limits::max();
  }
  return number;
}

}  // namespace brindle
