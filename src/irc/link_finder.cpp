#include "irc/link_finder.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {
namespace {

constexpr std::string_view kMark = "://";

// The length of the scheme that ends where `before` ends, 0 when it is none of ours.
size_t SchemeLength(std::string_view before) {
  for (const std::string_view scheme : {"https", "http"}) {
    if (before.size() >= scheme.size() &&
        EqualsIgnoringCase(before.substr(before.size() - scheme.size()), scheme)) {
      return scheme.size();
    }
  }
  return 0;
}

// A closing bracket belongs to the sentence unless the address opened one.
bool EndsSentence(std::string_view address) {
  const char last = address.back();
  if (last == ')' || last == ']') {
    const char open = last == ')' ? '(' : '[';
    return std::count(address.begin(), address.end(), open) <
           std::count(address.begin(), address.end(), last);
  }
  return std::string_view(".,;:!?'*_").find(last) != std::string_view::npos;
}

}  // namespace

std::vector<LinkRange> FindLinks(std::string_view line) {
  std::vector<LinkRange> links;
  size_t from = 0;
  for (size_t mark = line.find(kMark); mark != std::string_view::npos;
       mark = line.find(kMark, from)) {
    const size_t hostBegin = mark + kMark.size();
    const size_t scheme = SchemeLength(line.substr(from, mark - from));
    from = hostBegin;
    if (scheme == 0) continue;
    size_t end = std::min(line.find_first_of(" \t\"<>`|{}\\^", hostBegin), line.size());
    while (end > hostBegin && EndsSentence(line.substr(hostBegin, end - hostBegin))) --end;
    if (end == hostBegin) continue;
    links.push_back({mark - scheme, end});
    from = end;
  }
  return links;
}

}  // namespace brindle
