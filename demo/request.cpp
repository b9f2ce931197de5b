#include "request.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "irc_line.h"

namespace demo {

namespace {

std::optional<int> Number(std::string_view digits) {
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size() || digits.starts_with('-')) {
    return std::nullopt;
  }
  return number;
}

void ReadMails(std::string_view what, int mailCount, Request& request) {
  const size_t dash = what.find('-');
  const auto first = Number(what.substr(0, dash));
  const auto last = dash == std::string_view::npos ? first : Number(what.substr(dash + 1));
  request.kind = Request::Kind::kBadMails;
  if (!first || !last || *first < 1 || *last < *first || *last > mailCount) return;
  request.kind = Request::Kind::kMails;
  request.first = *first;
  request.last = *last;
}

}  // namespace

std::optional<std::string_view> AddressedTo(std::string_view handle, std::string_view text) {
  if (!text.starts_with('!')) return std::nullopt;
  const size_t end = std::min(text.find(' '), text.size());
  if (LowerAscii(text.substr(1, end - 1)) != LowerAscii(handle)) return std::nullopt;
  return text.substr(std::min(end + 1, text.size()));
}

Request ParseRequest(std::string_view words, int mailCount) {
  Request request;
  const size_t verbEnd = words.find(' ');
  const size_t nameEnd = words.rfind(' ');
  if (verbEnd == std::string_view::npos) return request;
  const std::string verb = LowerAscii(words.substr(0, verbEnd));
  const std::string_view what = words.substr(nameEnd + 1);
  if (nameEnd > verbEnd) request.screenName = words.substr(verbEnd + 1, nameEnd - verbEnd - 1);

  if (verb == "verify") {
    request.kind = Request::Kind::kVerify;
    request.code = what;
  } else if (verb == "send" && !request.screenName.empty()) {
    const std::string lower = LowerAscii(what);
    if (lower == "accesscode") {
      request.kind = Request::Kind::kAccessCode;
    } else if (lower == "list") {
      request.kind = Request::Kind::kList;
    } else if (lower == "status") {
      request.kind = Request::Kind::kStatus;
    } else {
      ReadMails(what, mailCount, request);
    }
  }
  return request;
}

std::string AccessCode(std::string_view screenName) {
  // FNV-1a, spelled without the letters and digits that are easily mixed up.
  constexpr std::string_view kLetters = "ABCDEFGHJKLMNPQRSTUVWXYZ23456789";
  std::uint64_t hash = 14695981039346656037ULL;
  for (const char c : LowerAscii(screenName)) {
    if (c != ' ') hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  }
  std::string code;
  for (int shift = 60; code.size() < 8; shift -= 5) {
    code += kLetters[(hash >> shift) % kLetters.size()];
  }
  return code;
}

}  // namespace demo
