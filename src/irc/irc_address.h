#pragma once
// Addresses of IRC servers and rooms, as links have them: irc://host:port/room. They come from
// strangers, so whatever is not plainly an address is none.

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

struct IrcAddress {
  std::string host;  // a name or an address; one of IPv6 without its brackets
  int port = 0;      // 1 to 65535
  std::string room;  // with its "#"; empty when the address names none
  bool secure = false;
  friend bool operator==(const IrcAddress&, const IrcAddress&) = default;
};

// True for text that is meant as such an address, be it a good one or not.
bool LooksLikeIrcAddress(std::string_view text);

// Nothing for an address with a user, a query, or a host or room that the protocol could not carry
// as one word (RFC 3986, section 3; RFC 1459, section 1.3).
std::optional<IrcAddress> ParseIrcAddress(std::string_view text);

}  // namespace brindle
