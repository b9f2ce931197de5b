#pragma once
// What is agreed with a server beyond RFC 1459, as far as the options want it: its capabilities
// (IRCv3) and the proof of an account (SASL, or NickServ where a server has none). With those
// options off it says nothing, and nothing precedes NICK.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "irc/capabilities.h"
#include "irc/connection.h"
#include "irc/irc_line.h"
#include "irc/send_queue.h"
#include "irc/session.h"
#include "irc/window_view.h"
#include "settings/options.h"

namespace brindle {

class Handshake {
 public:
  Handshake(const Session& session, Connection& connection, SendQueue& lines, Screen screen,
            const Options& options);
  Handshake(const Handshake&) = delete;
  Handshake& operator=(const Handshake&) = delete;

  // Asked for the account's password when it is needed, which is never kept.
  void SetPassword(std::function<std::string()> password) { password_ = std::move(password); }

  // True when this session has asked the server what it can do.
  bool IsActive() const { return active_; }
  bool IsOn(std::string_view capability) const { return capabilities_.IsOn(capability); }
  // True when lines may come with tags in front.
  bool BringsTags() const;

  // What the parser found, while IsActive().
  void Capability(const IrcLine& line);
  // The server knows no capabilities.
  void NoCapabilities();
  void Authenticate(const IrcLine& line);
  void AccountReply(const IrcLine& line);
  // False when the server begins the session although the account is not proven: the session has
  // ended.
  bool MayBegin();

 private:
  enum class Proof { kNone, kOffered, kAnswered, kProven };

  void Begin();
  void Welcomed();
  void StartProof();
  void EndNegotiation();
  void Answer();
  void TellNickServ();
  // False when the session is another one now.
  bool KeepStrictTransport();
  void Refuse(const std::string& words);
  void Status(const std::string& text, const char* colour = "");
  // True where nobody between here and the server can read along.
  bool IsPrivate() const;

  const Session& session_;
  Connection& connection_;
  SendQueue& lines_;
  Screen screen_;
  const Options& options_;
  std::function<std::string()> password_;
  Capabilities capabilities_;
  bool active_ = false;
  Proof proof_ = Proof::kNone;
};

}  // namespace brindle
