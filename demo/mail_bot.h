#pragma once
// The bot itself: registers, joins its room, answers requests and announces itself. It sees lines
// and times only; the socket and the clock belong to the caller.

#include <chrono>
#include <fstream>
#include <optional>
#include <string>

#include "catalogue.h"
#include "request.h"
#include "server_link.h"

namespace demo {

struct BotSettings {
  std::string handle;
  std::string room;
  std::string listPath;                  // told to users who ask for the list
  std::string transcriptPath;            // empty for no transcript
  std::chrono::milliseconds announce{};  // between two announcements; zero for none
};

class MailBot {
 public:
  // Both references are kept. The transcript file starts anew.
  MailBot(BotSettings settings, const Catalogue& catalogue, ServerLink& link);

  // Queues the registration.
  void Register();

  // Acts on one line from the server.
  void HandleLine(const std::string& line, Moment now);

  // Announces the bot when it is time to.
  void Tick(Moment now);

  bool Joined() const { return joined_.has_value(); }
  // When Tick has something to do next; nothing when it never has.
  std::optional<Moment> NextAnnouncement() const { return nextAnnouncement_; }
  // Why the bot cannot go on, in words for its keeper; empty while it can.
  const std::string& Failure() const { return failure_; }

 private:
  void OnJoin(const IrcLine& line, Moment now);
  void OnText(const IrcLine& line, Moment now);
  std::string Answer(const Request& request, Moment now);
  std::string MailsOnTheWay(const Request& request);
  std::string Status(Moment now) const;
  void Record(const std::string& nick, const std::string& text, Moment now);

  BotSettings settings_;
  const Catalogue& catalogue_;
  ServerLink& link_;
  std::ofstream transcript_;
  std::optional<Moment> joined_;
  std::optional<Moment> nextAnnouncement_;
  int announcements_ = 0;
  int requestsServed_ = 0;
  int mailsSent_ = 0;
  std::string failure_;
};

}  // namespace demo
