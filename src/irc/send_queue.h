#pragma once
// The one way out to the IRC server, in classes: what the protocol wants at once goes straight to
// Connection::SendRaw; typed lines come next; then requests, at a pace that the server keeps up
// with; a WHOIS only while nothing else is going on.

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "irc/connection.h"
#include "irc/own_lines.h"
#include "irc/server_pace.h"
#include "irc/session.h"

namespace brindle {

class SendQueue {
 public:
  // Between two lines of a run of requests, and between typed lines that wait.
  static constexpr int kPauseMilliseconds = 200;
  // A longer run asks the server how far it has come.
  static constexpr size_t kShortRun = 20;
  // Typed lines that go at once, before others have to wait.
  static constexpr int kTypedBurst = 3;
  static constexpr int kWhoisMilliseconds = 2000;
  // A request line that was said so long ago may not have arrived yet.
  static constexpr int kDoubtMilliseconds = 3000;

  SendQueue(const Session& session, Connection& connection, const Clock& clock)
      : session_(session), connection_(connection), clock_(clock) {
    connection.OnSent([this](std::string_view line) { Count(line); });
  }
  SendQueue(const SendQueue&) = delete;
  SendQueue& operator=(const SendQueue&) = delete;

  // Sends a line that the user typed, behind those that wait; `sent` is called as it goes. Lines
  // that still wait when the session ends are dropped.
  void SendTyped(std::string line, std::function<void()> sent);

  // A run of so many request lines begins, and ends. Runs may begin inside runs.
  void BeginRun(size_t lines);
  void EndRun(size_t lines);
  // True when the server is ready for another request line.
  bool MayRequest();
  // Sends one now; its number, which grows.
  std::uint64_t SendRequest(std::string_view line);
  // The number of the last request line that is known to have reached the server.
  std::uint64_t ConfirmedRequest() const;
  // True when the server has not answered for a minute although lines wait.
  bool IsStalled() const;

  // What was said and not answered for yet.
  OwnLines& Own() { return own_; }

  // Asks about somebody who has come, where that disturbs nothing.
  void Whois(std::string_view nick);

  // An answer to a PING; false when the PING was not ours.
  bool TakePong(std::string_view token);

  // Sends what has waited long enough. To be called every few milliseconds while IsWaiting().
  void tmrSend_Timer();
  bool IsWaiting() const {
    return IsSending() || clock_.Ticks() - lastRequest_ <= kDoubtMilliseconds;
  }

  // Called when there is something to wait for.
  void OnWaiting(std::function<void()> wake) { wake_ = std::move(wake); }

 private:
  struct Typed {
    std::string line;
    std::function<void()> sent;
  };

  // Lines are still to go, or to be answered for.
  bool IsSending() const { return !typed_.empty() || runs_ > 0 || own_.IsWaiting(); }
  void SendNextTyped();
  // Tells the pace of a line that others have sent.
  void Count(std::string_view line);
  // Forgets what belonged to another session.
  void FollowSession();
  void Wake() {
    if (wake_) wake_();
  }

  const Session& session_;
  Connection& connection_;
  const Clock& clock_;
  std::function<void()> wake_;
  OwnLines own_;
  std::deque<Typed> typed_;
  int typedInBurst_ = 0;
  TickCount lastTyped_ = -kPauseMilliseconds;
  TickCount lastWhois_ = -kWhoisMilliseconds;
  TickCount lastRequest_ = -kDoubtMilliseconds - 1;
  int runs_ = 0;
  int longRuns_ = 0;
  ServerPace pace_;
  unsigned sessionNumber_ = 0;
  std::uint64_t requests_ = 0;
  std::uint64_t confirmedBefore_ = 0;  // requests of earlier sessions
};

}  // namespace brindle
