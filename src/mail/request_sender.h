#pragma once
// One request to a mail server: the line in the room, its echo on screen, and the pause after it
// that keeps the IRC server from taking the requests for a flood.

#include <string>

#include "base/clock.h"
#include "irc/connection.h"
#include "irc/output_queue.h"
#include "irc/session.h"
#include "settings/options.h"

namespace brindle {

class RequestSender {
 public:
  static constexpr int kPauseMilliseconds = 200;

  RequestSender(const Session& session, Connection& connection, OutputQueue& queue,
                const Options& options, const Clock& clock, EventPump& events)
      : session_(session),
        connection_(connection),
        queue_(queue),
        options_(options),
        clock_(clock),
        events_(events) {}

  // Echoes and says "!handle send screenName what" in the current room. Texts go out as they are.
  void Send(const std::string& handle, const std::string& screenName, const std::string& what);

  // Waits while window events run: anything may have changed when it returns.
  void PauseAfter() { Pause(clock_, events_, kPauseMilliseconds); }

  const Session& CurrentSession() const { return session_; }

 private:
  const Session& session_;
  Connection& connection_;
  OutputQueue& queue_;
  const Options& options_;
  const Clock& clock_;
  EventPump& events_;
};

}  // namespace brindle
