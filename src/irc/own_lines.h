#pragma once
// What we have said and the server has not answered for yet. A server may relay our own lines to us
// (IRCv3, "echo-message"): then each is shown when it comes back, as it came back. And it may
// answer each line under a label (IRCv3, "labeled-response"): then it is known which one was taken
// or refused.

#include <cstdint>
#include <ctime>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"

namespace brindle {

struct OwnLine {
  using Show = std::function<void(const std::string& text, const std::optional<std::tm>& saidAt)>;

  std::string target;
  std::string text;
  Show show;                  // what is seen of it
  std::uint64_t request = 0;  // its number among the requests, 0 for none
};

class OwnLines {
 public:
  // A line that is not answered within this time is shown as it was said.
  static constexpr int kAnswerMilliseconds = 10000;

  // What the server of this session does.
  void SetModes(bool relayed, bool labelled) {
    relayed_ = relayed;
    labelled_ = labelled;
  }

  // The tag to send in front of the next line, with a blank behind; empty where there are no
  // labels.
  std::string NextTag();
  // Shows the line now, where it will not be relayed.
  void ShowUnlessRelayed(OwnLine& line) const;
  // The line was sent with that tag. It is shown now, where it is not relayed and was not yet.
  void Sent(OwnLine line, const std::string& tag, TickCount now);

  // The server has relayed a line; false when it is none that is waited for.
  bool Relayed(std::string_view label, std::string_view target, std::string_view text,
               const std::optional<std::tm>& saidAt);
  // The server has taken the line of that label.
  void Taken(std::string_view label);
  // The server has refused it, in its own words.
  void Refused(std::string_view label, const std::string& reason);
  bool Knows(std::string_view label) const;

  // Gives up what has waited too long.
  void tmrAnswer_Timer(TickCount now);
  // Nothing is answered any more.
  void EndSession();
  bool IsWaiting() const { return !waiting_.empty(); }
  // Lines that will be shown when they are relayed.
  size_t OnTheWay() const;

  // Called when a request was taken (no refusal) or refused.
  using Answered = std::function<void(std::uint64_t request, const std::string& refusal)>;
  void OnAnswered(Answered answered) { answered_ = std::move(answered); }
  // Called when OnTheWay changes.
  void OnChanged(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  struct Waiting {
    OwnLine line;  // without `show` once it was shown
    std::string label;
    TickCount since;
  };
  using Place = std::deque<Waiting>::iterator;

  Place Find(std::string_view label);
  Place FindRelayed(std::string_view label, std::string_view target, std::string_view text);
  Waiting TakeOut(Place place);
  void GiveUpFirst();

  bool relayed_ = false;
  bool labelled_ = false;
  std::uint64_t labels_ = 0;
  std::deque<Waiting> waiting_;  // in the order of sending
  Answered answered_;
  std::function<void()> changed_;
};

}  // namespace brindle
