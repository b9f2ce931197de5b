#pragma once
// Hosts with ports as people write them: "host:port", or "[address]:port" for IPv6 (RFC 3986,
// section 3.2.2).

#include <string>
#include <string_view>
#include <vector>

namespace brindle {

inline constexpr int kHighestPort = 65535;

// The text cut at its colons; the colons of an address in brackets do not cut, and the brackets are
// taken off.
std::vector<std::string_view> EndpointParts(std::string_view text);

// `host` and `port` so that they are cut where they were joined.
std::string EndpointText(std::string_view host, int port);

// A host as typed, without the blanks and the brackets around it.
std::string_view BareHost(std::string_view host);

}  // namespace brindle
