#pragma once
// Notices mail servers that announce themselves in chat: a line with "!handle send" or
// "/notice handle send". A new server is added to the handles, the user is told, and when the
// option says so the server is asked for an access code.

#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "irc/output_queue.h"
#include "irc/room_voice.h"
#include "mail/server_handles.h"

namespace brindle {

// True when `text` announces a server.
bool IsServerAnnouncement(std::string_view text);

// The handle in the last announcement of `text`, in lower case; empty when there is none.
std::string ExtractServerHandle(std::string_view text);

// `handle` without blanks, bold and underline marks and "!", in lower case.
std::string CleanHandle(std::string_view handle);

class ServerDetection {
 public:
  // Longer ones are not believed.
  static constexpr size_t kLongestHandle = 64;
  // Codes are asked for by themselves so rarely, whatever the room says.
  static constexpr int kBetweenRequests = 1000;  // milliseconds
  static constexpr int kMostInMinute = 10;

  // `screenName` gives the text of txtInfoAOLSN at that moment.
  ServerDetection(RoomVoice& voice, OutputQueue& queue, ChatStyle style, ServerHandles& handles,
                  std::function<std::string()> screenName)
      : voice_(voice),
        queue_(queue),
        style_(style),
        handles_(handles),
        screenName_(std::move(screenName)) {}

  // Looks at a line before it is displayed. Sends one line at most, and only when somebody else
  // said the line in the current room.
  void Scan(std::string_view line, Origin origin);

  bool ServerHandleKnown(std::string_view handle) const;

 private:
  void Announce(const std::string& handle, bool requesting);
  // True when a code may be asked for now, which counts as asking.
  bool TakeTurn();

  RoomVoice& voice_;
  OutputQueue& queue_;
  ChatStyle style_;
  ServerHandles& handles_;
  std::function<std::string()> screenName_;
  std::deque<TickCount> requests_;  // of the last minute
};

}  // namespace brindle
