#include "update/update_check.h"

#include <algorithm>
#include <tuple>

#include "base/text.h"
#include "base/time_text.h"
#include "settings/settings_text.h"

namespace brindle {
namespace {

constexpr size_t kSha256Digits = 64;
constexpr int kModemKilobytesPerSecond = 5;
constexpr std::string_view kSchemeEnd = "://";

bool IsAddressCharacter(char c) { return c > ' ' && c < '\x7F' && c != '@' && c != '\\'; }

}  // namespace

UpdateList ReadUpdateList(std::string_view text) {
  const SettingsText settings(text);
  const auto number = [&settings](const char* section, const char* key, long long otherwise) {
    const std::string value = settings.Read(section, key);
    return value.empty() ? otherwise : LeadingNumber(value);
  };
  UpdateList list;
  list.version.major = number("version", "major", 0);
  list.version.minor = number("version", "minor", 0);
  list.version.revision = number("version", "revision", 0);
  list.kilobytes = number("size", "kb", 1);
  list.news = settings.Read("news", "news");
  list.sha256 = settings.Read("version", "sha256");
  return list;
}

bool OffersUpdate(const Version& offered, const Version& own) {
  return offered.major > own.major || offered.minor > own.minor || offered.revision > own.revision;
}

bool IsLater(const Version& offered, const Version& own) {
  return std::tie(offered.major, offered.minor, offered.revision) >
         std::tie(own.major, own.minor, own.revision);
}

bool NamesFile(const UpdateList& list) {
  return list.sha256.size() == kSha256Digits &&
         list.sha256.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

std::string UpdateSummary(const UpdateList& list) {
  return "Update to v" + std::to_string(list.version.major) + "." +
         std::to_string(list.version.minor) + "." + std::to_string(list.version.revision) + "; " +
         std::to_string(list.kilobytes) + "kb; " +
         DurationText(list.kilobytes / kModemKilobytesPerSecond, DurationStyle::kMs) +
         " on a 56k modem";
}

UpdateServer ReadUpdateServer(std::string_view base) {
  base = TrimBlanks(base);
  std::string scheme = "http";
  if (const size_t end = base.find(kSchemeEnd); end != std::string_view::npos) {
    scheme = LowerCase(base.substr(0, end));
    base.remove_prefix(end + kSchemeEnd.size());
  }
  while (base.ends_with('/')) base.remove_suffix(1);
  const std::string_view address = base.substr(0, base.find('/'));
  const bool usable = (scheme == "http" || scheme == "https") && !address.empty() &&
                      base.find_first_of("?#") == std::string_view::npos &&
                      std::all_of(base.begin(), base.end(), IsAddressCharacter);
  if (!usable) return {std::string(address), ""};
  return {std::string(address), scheme + std::string(kSchemeEnd) + std::string(base)};
}

}  // namespace brindle
