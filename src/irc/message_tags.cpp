#include "irc/message_tags.h"

#include <algorithm>
#include <chrono>

#include "base/text.h"

namespace brindle {
namespace {

std::string Unescaped(std::string_view value) {
  std::string plain;
  for (size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\') {
      plain += value[i];
      continue;
    }
    if (++i == value.size()) break;
    constexpr std::string_view kEscaped = ":srn";
    constexpr std::string_view kMeant = "; \r\n";
    const size_t at = kEscaped.find(value[i]);
    plain += at == std::string_view::npos ? value[i] : kMeant[at];
  }
  return plain;
}

// The number that digits of a fixed place spell.
int Digits(std::string_view moment, size_t at, size_t count) {
  int number = 0;
  for (const char digit : moment.substr(at, count)) number = number * 10 + (digit - '0');
  return number;
}

bool HasMomentsShape(std::string_view moment) {
  constexpr std::string_view kShape = "0000-00-00T00:00:00";
  const auto alike = [](char wanted, char found) {
    return wanted == '0' ? found >= '0' && found <= '9' : wanted == found;
  };
  if (moment.size() <= kShape.size() || !moment.ends_with('Z') ||
      !std::equal(kShape.begin(), kShape.end(), moment.begin(), alike)) {
    return false;
  }
  const std::string_view rest = moment.substr(kShape.size(), moment.size() - kShape.size() - 1);
  return rest.empty() || (rest.starts_with('.') && IsAllDigits(rest.substr(1)));
}

}  // namespace

MessageTags MessageTags::CutFrom(std::string_view& line) {
  MessageTags tags;
  if (!line.starts_with('@')) return tags;
  const size_t end = std::min(line.find(' '), line.size());
  if (end < kMostBytes) tags.tags_ = line.substr(1, end - 1);
  line.remove_prefix(std::min(line.find_first_not_of(' ', end), line.size()));
  return tags;
}

std::string MessageTags::Value(std::string_view key) const {
  std::string_view found;
  for (std::string_view rest = tags_; !rest.empty();) {
    const std::string_view tag = rest.substr(0, rest.find(';'));
    rest.remove_prefix(std::min(tag.size() + 1, rest.size()));
    const size_t equals = std::min(tag.find('='), tag.size());
    if (tag.substr(0, equals) == key) found = tag.substr(std::min(equals + 1, tag.size()));
  }
  return Unescaped(found);
}

std::optional<std::tm> LocalTimeOf(std::string_view moment) {
  if (!HasMomentsShape(moment)) return std::nullopt;
  using namespace std::chrono;
  const year_month_day date{year(Digits(moment, 0, 4)),
                            month(static_cast<unsigned>(Digits(moment, 5, 2))),
                            day(static_cast<unsigned>(Digits(moment, 8, 2)))};
  const int hour = Digits(moment, 11, 2);
  const int minute = Digits(moment, 14, 2);
  const int second = Digits(moment, 17, 2);
  // A minute may have a second more than sixty.
  if (!date.ok() || hour > 23 || minute > 59 || second > 60) return std::nullopt;
  // In seconds: the system's clock counts finer, and only to the year 2262.
  const sys_seconds when = sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
  const std::time_t time = when.time_since_epoch().count();
  const std::tm* local = std::localtime(&time);
  return local == nullptr ? std::nullopt : std::optional(*local);
}

}  // namespace brindle
