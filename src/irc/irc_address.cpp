#include "irc/irc_address.h"

#include <algorithm>

#include "base/text.h"
#include "settings/endpoint.h"

namespace brindle {
namespace {

constexpr int kPlainPort = 6667;
constexpr int kSecurePort = 6697;
constexpr size_t kLongestHost = 253;  // RFC 1035, section 2.3.4
constexpr size_t kLongestRoom = 200;  // RFC 1459, section 1.3
constexpr std::string_view kSchemes[] = {"irc://", "ircs://"};

bool IsAlphanumeric(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsHostName(std::string_view host) {
  return !host.empty() && host.size() <= kLongestHost && IsAlphanumeric(host.front()) &&
         std::all_of(host.begin(), host.end(),
                     [](char c) { return IsAlphanumeric(c) || c == '.' || c == '-' || c == '_'; });
}

bool IsIpv6(std::string_view host) {
  return host.size() >= 2 && host.size() <= kLongestHost &&
         host.find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos &&
         std::count(host.begin(), host.end(), ':') >= 2;
}

std::optional<int> HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return std::nullopt;
}

std::optional<std::string> PercentDecoded(std::string_view text) {
  std::string decoded;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded += text[i];
      continue;
    }
    if (i + 2 >= text.size()) return std::nullopt;
    const auto high = HexDigit(text[i + 1]);
    const auto low = HexDigit(text[i + 2]);
    if (!high || !low) return std::nullopt;
    decoded += static_cast<char>(*high * 16 + *low);
    i += 2;
  }
  return decoded;
}

// Empty for no room at all.
std::optional<std::string> RoomIn(std::string_view path) {
  std::optional<std::string> room = PercentDecoded(path);
  if (!room || room->empty()) return room;
  if (room->front() != '#') room->insert(0, "#");
  const bool plain = std::all_of(room->begin(), room->end(), [](char c) {
    return static_cast<unsigned char>(c) > ' ' && c != ',' && c != '\x7F';
  });
  if (!plain || room->size() > kLongestRoom || room->size() < 2) return std::nullopt;
  return room;
}

}  // namespace

bool LooksLikeIrcAddress(std::string_view text) {
  return std::any_of(std::begin(kSchemes), std::end(kSchemes), [text](std::string_view scheme) {
    return EqualsIgnoringCase(text.substr(0, scheme.size()), scheme);
  });
}

std::optional<IrcAddress> ParseIrcAddress(std::string_view text) {
  if (!LooksLikeIrcAddress(text)) return std::nullopt;
  IrcAddress address;
  address.secure = text[3] != ':';
  address.port = address.secure ? kSecurePort : kPlainPort;
  std::string_view rest = text.substr(text.find("//") + 2);
  const size_t pathBegin = std::min(rest.find('/'), rest.size());
  std::string_view authority = rest.substr(0, pathBegin);
  const std::string_view path = rest.substr(std::min(pathBegin + 1, rest.size()));
  // Nothing here knows what a query would ask for.
  if (path.find('?') != std::string_view::npos) return std::nullopt;

  bool hostIsGood = false;
  if (authority.starts_with('[')) {
    const size_t close = authority.find(']');
    if (close == std::string_view::npos) return std::nullopt;
    address.host = authority.substr(1, close - 1);
    authority.remove_prefix(close + 1);
    hostIsGood = IsIpv6(address.host);
  } else {
    const size_t colon = std::min(authority.find(':'), authority.size());
    address.host = authority.substr(0, colon);
    authority.remove_prefix(colon);
    hostIsGood = IsHostName(address.host);
  }
  if (!hostIsGood) return std::nullopt;
  if (!authority.empty()) {
    const std::string_view digits = authority.substr(1);
    const auto port = IsAllDigits(digits) ? WholeNumber(digits, 1, kHighestPort) : std::nullopt;
    if (authority.front() != ':' || !port) return std::nullopt;
    address.port = static_cast<int>(*port);
  }
  const auto room = RoomIn(path);
  if (!room) return std::nullopt;
  address.room = *room;
  return address;
}

}  // namespace brindle
