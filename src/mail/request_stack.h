#pragma once
// Sends runs of requests line by line, at the pace that the server keeps up with. A run that is
// begun while another one goes is sent first; then the other one goes on. Runs end when their lines
// are said, when the user stops them, and when the room or the session is left; what may not have
// reached the server is given back to the run that asked for it.

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/clock.h"
#include "irc/room_voice.h"
#include "irc/send_queue.h"
#include "irc/session.h"
#include "irc/window_view.h"

namespace brindle {

// "!handle send screenName what"
std::string RequestText(const std::string& handle, const std::string& screenName,
                        const std::string& what);

struct RequestLine {
  std::string text;
  std::string what;                // as the user is told
  std::function<void()> takeBack;  // it did not arrive; may be empty
};

struct RequestRun {
  size_t lines = 0;  // so many will come, as far as is known
  std::function<std::optional<RequestLine>()> next;
  std::function<bool()> isStale;  // what it asks for is gone; may be empty
  const void* owner = nullptr;    // see RequestStack::StopRunsOf
  std::string afterword;          // told when the run is done; may be empty
  // The session was lost before the run was done; may be empty.
  std::function<void(const std::string& room)> sessionLost = {};
};

struct RunProgress {
  size_t sent = 0;
  size_t lines = 0;
  std::string what;  // the last line said
};

class RequestStack {
 public:
  static constexpr int kTickMilliseconds = 10;

  RequestStack(const Session& session, RoomVoice& voice, SendQueue& lines, WindowView& window,
               const Clock& clock)
      : session_(session), voice_(voice), lines_(lines), window_(window), clock_(clock) {
    lines.Own().OnAnswered(
        [this](std::uint64_t number, const std::string& refusal) { Answered(number, refusal); });
  }
  RequestStack(const RequestStack&) = delete;
  RequestStack& operator=(const RequestStack&) = delete;

  // Says its first line at once.
  void Push(RequestRun run);

  // To be called every kTickMilliseconds while there are runs, and until their last line is beyond
  // doubt.
  void tmrRequest_Timer();
  bool IsIdle() const { return runs_.empty(); }

  // Ends every run; what was not said stays as it is.
  void Stop();
  void StopRunsOf(const void* owner);
  // The server has refused a line to the room.
  void LineRefused(const std::string& reason);

  // Called at each line and at the end, when there is no progress.
  void OnProgress(std::function<void(const std::optional<RunProgress>&)> show) {
    show_ = std::move(show);
  }

 private:
  struct Running {
    RequestRun run;
    size_t sent = 0;
  };
  struct Said {
    std::uint64_t number;
    TickCount when;
    std::function<void()> takeBack;
  };

  bool IsSessionLost() const;
  // All runs are done: gives back what the session may have taken with it.
  void WatchLastLines();
  // True when the runs had to end because the room or the session was left.
  bool EndedWithRoom();
  // The server has taken exactly that line, or refused it.
  void Answered(std::uint64_t number, const std::string& refusal);
  void DropStaleRuns();
  void ForgetArrived();
  void SayNext();
  void FinishTop();
  // Ends all runs; `words` tell the user why, with how far the top one has come.
  void EndAll(const std::string& words);
  void TakeBackSince(TickCount moment);
  void Pop();
  void Show(const std::optional<RunProgress>& progress) {
    if (show_) show_(progress);
  }

  const Session& session_;
  RoomVoice& voice_;
  SendQueue& lines_;
  WindowView& window_;
  const Clock& clock_;
  std::function<void(const std::optional<RunProgress>&)> show_;
  std::vector<Running> runs_;  // the last one is being sent
  std::deque<Said> said_;      // and not known to have arrived
  unsigned sessionNumber_ = 0;
  std::string room_;
  TickCount due_ = 0;  // of the next line
  bool toldStalled_ = false;
};

}  // namespace brindle
