#include "settings/endpoint.h"

#include "base/text.h"

namespace brindle {

std::vector<std::string_view> EndpointParts(std::string_view text) {
  const size_t end = text.find(']');
  if (!text.starts_with('[') || end == std::string_view::npos) return Split(text, ":");
  std::vector<std::string_view> parts = Split(text.substr(end + 1), ":");
  // What stands between the bracket and the colon belongs to no host.
  parts.front() = parts.front().empty() ? text.substr(1, end - 1) : std::string_view();
  return parts;
}

std::string EndpointText(std::string_view host, int port) {
  // A line of a list that begins with a slash is passed over.
  const bool inBrackets = host.find(':') != std::string_view::npos || host.starts_with('/');
  return (inBrackets ? "[" + std::string(host) + "]" : std::string(host)) + ":" +
         std::to_string(port);
}

std::string_view BareHost(std::string_view host) {
  host = TrimBlanks(host);
  if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
    host = host.substr(1, host.size() - 2);
  }
  return host;
}

}  // namespace brindle
