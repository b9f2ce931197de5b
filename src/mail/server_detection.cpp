#include "mail/server_detection.h"

#include "base/text.h"
#include "irc/echo.h"

namespace brindle {
namespace {

constexpr char kBannerStart[] =
    "\0034:\0037:\0038( \00312ATTENTION \0038)\0037:\0034: \00312ADDED \0037";

bool IsSend(std::string_view word) { return EqualsIgnoringCase(word, "send"); }

bool HoldsMark(std::string_view word) { return word.find('!') != std::string_view::npos; }

bool HoldsNotice(std::string_view word) {
  return LowerCase(word).find("/notice") != std::string::npos;
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

void ServerDetection::Scan(std::string_view line) {
  if (!options_.scanChatForServers || IsBlank(line) || !IsServerAnnouncement(line)) return;
  std::string handle = ExtractServerHandle(line);
  // A mark without a name announces nobody.
  if (CleanHandle(handle).empty() || ServerHandleKnown(handle)) return;
  std::string added = handle;
  handles_.AddServerHandle(added);
  const std::string screenName = screenName_();
  const bool requesting =
      !IsBlank(screenName) && options_.requestAccessCode && !session_.currentRoom.empty();
  Announce(handle, requesting);
  if (requesting) RequestAccessCode(handle, screenName);
}

bool ServerDetection::ServerHandleKnown(std::string_view handle) const {
  std::string key(handle);
  return !handles_.ServerHandleMissing(key);
}

void ServerDetection::Announce(const std::string& handle, bool requesting) {
  const char* outcome =
      requesting ? " REQUESTING ACCESSCODE."
                 : " Can't request code(either no screen name is entered or this options is off).";
  queue_.QueueLine("\r\n" + std::string(kBannerStart) + UpperCase(handle) + outcome,
                   Kind::kServerAdded);
}

void ServerDetection::RequestAccessCode(const std::string& handle, const std::string& screenName) {
  const std::string tail = " send " + screenName + " accesscode";
  queue_.QueueLine(EchoStart(session_, options_, clock_) + "!" + handle + tail, Kind::kRoom);
  connection_.SendRaw("PRIVMSG " + session_.currentRoom + " :!" + CleanHandle(handle) + tail);
}

}  // namespace brindle
