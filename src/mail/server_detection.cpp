#include "mail/server_detection.h"

#include <algorithm>

#include "base/text.h"
#include "irc/chat_colours.h"

namespace brindle {
namespace {

// Colours of two digits, so that the handle may begin with one.
constexpr char kBannerStart[] =
    "\00304:\00307:\00308( \00312ATTENTION \00308)\00307:\00304: \00312ADDED \00307";

bool IsSend(std::string_view word) { return EqualsIgnoringCase(word, "send"); }

bool HoldsMark(std::string_view word) { return word.find('!') != std::string_view::npos; }

bool HoldsNotice(std::string_view word) {
  return LowerCase(word).find("/notice") != std::string::npos;
}

// The line as it reads: without its colours and other marks.
std::string WithoutMarks(std::string_view line, const Options& options) {
  std::string text;
  for (const ColouredRun& run : ColouredRuns(line, options)) text += run.text;
  return text;
}

bool HoldsControl(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
}

}  // namespace

bool IsServerAnnouncement(std::string_view text) {
  const auto words = Split(text, " ");
  for (size_t i = 0; i + 1 < words.size(); ++i) {
    if (HoldsMark(words[i]) && IsSend(words[i + 1])) return true;
    if (i + 2 < words.size() && IsSend(words[i + 2]) && HoldsNotice(words[i])) return true;
  }
  return false;
}

std::string ExtractServerHandle(std::string_view text) {
  const auto words = Split(text, " ");
  std::string_view handle;
  for (size_t i = 1; i < words.size(); ++i) {
    if (!IsSend(words[i])) continue;
    const std::string_view before = words[i - 1];
    if (HoldsMark(before)) {
      handle = before.substr(before.find('!') + 1);
    } else if (i >= 2 && HoldsNotice(words[i - 2])) {
      handle = before;
    }
  }
  return MatchKey(handle);
}

std::string CleanHandle(std::string_view handle) { return NormalizeHandle(handle); }

void ServerDetection::Scan(std::string_view line, Origin origin) {
  if (!style_.options.scanChatForServers || origin == Origin::kOwn || IsBlank(line)) return;
  const std::string text = WithoutMarks(line, style_.options);
  if (!IsServerAnnouncement(text)) return;
  std::string handle = ExtractServerHandle(text);
  // A mark without a name announces nobody.
  const std::string clean = CleanHandle(handle);
  if (clean.empty() || clean.size() > kLongestHandle || HoldsControl(clean) ||
      ServerHandleKnown(handle)) {
    return;
  }
  std::string added = handle;
  handles_.AddServerHandle(added);
  const std::string screenName = screenName_();
  const bool requesting = !IsBlank(screenName) && style_.options.requestAccessCode &&
                          origin == Origin::kRoom && TakeTurn();
  Announce(handle, requesting);
  if (requesting) voice_.SayWhole("!" + clean + " send " + screenName + " accesscode");
}

bool ServerDetection::ServerHandleKnown(std::string_view handle) const {
  return handles_.KnowsIgnoringCase(CleanHandle(handle));
}

bool ServerDetection::TakeTurn() {
  constexpr int kMinute = 60000;
  const TickCount now = style_.clock.Ticks();
  while (!requests_.empty() && now - requests_.front() >= kMinute) requests_.pop_front();
  if (requests_.size() >= kMostInMinute) return false;
  if (!requests_.empty() && now - requests_.back() < kBetweenRequests) return false;
  requests_.push_back(now);
  return true;
}

void ServerDetection::Announce(const std::string& handle, bool requesting) {
  const char* outcome =
      requesting ? " REQUESTING ACCESSCODE."
                 : " Can't request code(either no screen name is entered or this options is off).";
  queue_.QueueLine("\r\n" + std::string(kBannerStart) + UpperCase(handle) + outcome,
                   Kind::kServerAdded, Origin::kOwn);
}

}  // namespace brindle
