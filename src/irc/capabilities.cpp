#include "irc/capabilities.h"

#include <algorithm>

#include "base/text.h"
#include "irc/irc_line.h"
#include "settings/endpoint.h"
#include "settings/secure_servers.h"

namespace brindle {
namespace {

constexpr std::string_view kAccountName = "sasl";
constexpr std::string_view kWanted[] = {
    "account-notify", "account-tag",      "away-notify",  "batch",        "cap-notify",
    "echo-message",   "labeled-response", "message-tags", "multi-prefix", "server-time",
};
constexpr size_t kMostOffered = 500;

// "CAP", the nick, the word, and the list.
constexpr size_t kLeastParameters = 4;

std::string Request(const std::string& names) { return "CAP REQ :" + names; }

template <typename Use>
void ForEachName(std::string_view list, Use use) {
  for (const std::string_view name : Split(list, " ")) {
    if (!name.empty()) use(name);
  }
}

}  // namespace

std::optional<StrictTransport> ReadStrictTransport(std::string_view value) {
  StrictTransport read;
  for (const std::string_view entry : Split(value, ",")) {
    const size_t equals = std::min(entry.find('='), entry.size());
    const std::string_view key = entry.substr(0, equals);
    const std::string_view number = entry.substr(std::min(equals + 1, entry.size()));
    if (key == "port") {
      const auto port = WholeNumber(number, 1, kHighestPort);
      if (!port) return std::nullopt;
      read.port = static_cast<int>(*port);
    } else if (key == "duration") {
      if (!IsAllDigits(number)) return std::nullopt;
      read.duration =
          WholeNumber(number, 0, SecureServers::kLongestWish).value_or(SecureServers::kLongestWish);
    }
  }
  return read.port || read.duration ? std::optional(read) : std::nullopt;
}

std::string Capabilities::Begin(Want want) {
  Reset();
  want_ = want;
  negotiating_ = listing_ = true;
  return "CAP LS 302";
}

void Capabilities::Reset() { *this = Capabilities(); }

Capabilities::Step Capabilities::Take(std::string_view line) {
  const std::vector<std::string_view> words = ParametersOf(line);
  Step step;
  const std::string what = words.size() < kLeastParameters ? "" : UpperCase(words[2]);
  const std::string_view list = words.empty() ? "" : words.back();
  if (what == "LS" || what == "NEW") {
    const bool more = what == "LS" && words.size() > kLeastParameters && words[3] == "*";
    if (what == "LS" && !listing_) return step;
    Note(list);
    if (more || (what == "NEW" && listing_)) return step;
    listing_ = false;
    step.listed = true;
    step.send = Ask();
  } else if (what == "ACK") {
    Granted(list);
  } else if (what == "NAK") {
    step.send = Refused(list);
  } else if (what == "DEL") {
    Gone(list);
  } else {
    step.understood = false;
    return step;
  }
  step.settled = negotiating_ && !listing_ && asked_.empty();
  if (step.settled) negotiating_ = false;
  return step;
}

void Capabilities::Note(std::string_view list) {
  ForEachName(list, [this](std::string_view entry) {
    const size_t equals = std::min(entry.find('='), entry.size());
    if (offered_.size() >= kMostOffered) return;
    offered_[std::string(entry.substr(0, equals))] =
        entry.substr(std::min(equals + 1, entry.size()));
  });
}

bool Capabilities::Wants(std::string_view name) const {
  // An account is proven before the session begins, or never.
  if (name == kAccountName) return want_ != Want::kNewer && negotiating_;
  if (want_ == Want::kAccount || !Offered(name)) return false;
  return name != "labeled-response" || Offered("batch");
}

std::vector<std::string> Capabilities::Ask() {
  std::string names;
  const auto ask = [&](std::string_view name) {
    if (!Offered(name) || !Wants(name) || IsOn(name) || asked_.contains(name)) return;
    asked_.emplace(name);
    names.append(names.empty() ? "" : " ").append(name);
  };
  for (const std::string_view name : kWanted) ask(name);
  ask(kAccountName);
  if (names.empty()) return {};
  return {Request(names)};
}

void Capabilities::Granted(std::string_view list) {
  ForEachName(list, [this](std::string_view name) {
    if (asked_.erase(std::string(name)) > 0) on_.emplace(name);
  });
}

std::vector<std::string> Capabilities::Refused(std::string_view list) {
  // One that the server does not want makes it refuse all: each is asked for by itself, once.
  Names names;
  ForEachName(list, [&](std::string_view name) {
    if (asked_.contains(name)) names.emplace(name);
  });
  std::vector<std::string> again;
  const bool askSingly = names.size() > 1 && !askedSingly_;
  askedSingly_ |= askSingly;
  for (const std::string& name : names) {
    if (askSingly) {
      again.push_back(Request(name));
    } else {
      asked_.erase(name);
    }
  }
  return again;
}

void Capabilities::Gone(std::string_view list) {
  ForEachName(list, [this](std::string_view name) {
    offered_.erase(std::string(name));
    asked_.erase(std::string(name));
    on_.erase(std::string(name));
  });
}

std::optional<std::string> Capabilities::Offered(std::string_view name) const {
  const auto found = offered_.find(name);
  return found == offered_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace brindle
