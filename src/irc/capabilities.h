#pragma once
// What a server can do beyond RFC 1459, and what of it is on: the negotiation by CAP, version 302
// (IRCv3, "capability-negotiation"). Lines go in, lines come out; nothing here sends or shows.

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

// What "sts" says (IRCv3): where the server is reached by TLS, and for how many seconds to keep to
// that. Either may be missing.
struct StrictTransport {
  std::optional<int> port;
  std::optional<long long> duration;
};
// Nothing when the value makes no sense.
std::optional<StrictTransport> ReadStrictTransport(std::string_view value);

class Capabilities {
 public:
  enum class Want { kNewer, kAccount, kBoth };

  struct Step {
    std::vector<std::string> send;
    bool understood = true;
    bool listed = false;   // all that the server offers is known, or there is more
    bool settled = false;  // nothing is asked for any more: the account is next, then CAP END
  };

  // A new session, which has nothing on; the line that asks.
  std::string Begin(Want want);
  // No session asks any more.
  void Reset();
  Step Take(std::string_view line);

  // True from Begin until all that was asked for is granted or refused.
  bool IsNegotiating() const { return negotiating_; }
  bool IsOn(std::string_view name) const { return on_.contains(name); }
  // On or asked for: the very answer may make use of it.
  bool MayBeOn(std::string_view name) const { return IsOn(name) || asked_.contains(name); }
  // What the server offers under that name: its value, empty for none; nothing where it does not.
  std::optional<std::string> Offered(std::string_view name) const;

 private:
  using Names = std::set<std::string, std::less<>>;

  void Note(std::string_view list);
  bool Wants(std::string_view name) const;
  std::vector<std::string> Ask();
  void Granted(std::string_view list);
  std::vector<std::string> Refused(std::string_view list);
  void Gone(std::string_view list);

  Want want_ = Want::kNewer;
  bool negotiating_ = false;
  bool listing_ = false;
  bool askedSingly_ = false;
  std::map<std::string, std::string, std::less<>> offered_;
  Names asked_;
  Names on_;
};

}  // namespace brindle
