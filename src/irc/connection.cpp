#include "irc/connection.h"

#include <algorithm>
#include <ctime>

#include "base/random.h"
#include "base/text.h"
#include "irc/irc_line.h"
#include "settings/endpoint.h"
#include "settings/product.h"

namespace brindle {
namespace {

constexpr char kDisconnectedLine[] = "\r\n\0034Disconnected...";
constexpr char kSilentServer[] = "The server did not answer in time";
constexpr int kHighestNickNumber = 999;
constexpr int kMostRefusedNicks = 4;

std::string Farewell(const std::string& webAddress) {
  return "\0031I was using \0034" + VersionText() +
         "\0031 (a server helper). To learn more visit " + webAddress;
}

}  // namespace

void Connection::SendRaw(std::string_view line) {
  line = FirstLine(line);
  const size_t tags = line.starts_with('@') ? std::min(line.find(' '), line.size() - 1) + 1 : 0;
  const std::string_view tagged = line.substr(0, tags);
  line = FirstBytes(line.substr(tags), kLongestLine);
  wsChat_.Send(std::string(tagged).append(line).append(kCrLf));
  if (sent_) sent_(line);
}

void Connection::cmdConnect_Click(const ConnectFields& fields) {
  if (caption_ == ConnectCaption::kConnect) {
    // What is about to be done by itself gives way, even to a click that leads nowhere.
    if (reconnect_.IsWaiting()) cmdConnectCancel_Click();
    wished_ = fields;
    wasWelcome_ = false;
    lastRoom_.clear();
    reconnect_.Made();
    Connect(Strict(fields));
  } else {
    Disconnect();
  }
}

void Connection::Connect(const ConnectFields& fields) {
  if (IsBlank(fields.nick)) {
    views_.dialogs.Notice(Icon::kInformation, "Please enter your desired Nick.");
    return;
  }
  if (IsBlank(fields.server) || IsBlank(fields.port)) {
    views_.dialogs.Notice(Icon::kInformation, "Please select a server / port.");
    return;
  }
  fields_ = fields;
  refusedNicks_ = 0;
  quitSent_ = false;
  reached_ = false;
  ++session_.number;
  session_.altNickUsed = false;
  session_.sourceLength = Session::kAssumedSourceLength;
  session_.endReason.clear();
  views_.panel.ShowCancelButton(true);
  SetButton(ConnectCaption::kDisconnect, false);
  views_.panel.SetConnectTrouble("");
  views_.panel.SetNickFieldsEnabled(false);
  wsChat_.Close();
  queue_.QueueLine("\r\n\0033* Connecting to " + fields.server, Kind::kStatus);
  views_.window.SetStatusPanel("Status - Connecting...");
  session_.connectionState = ConnectionState::kConnecting;
  session_.currentRoom.clear();
  views_.window.SessionChanged();
  const std::optional<long long> port = WholeNumber(fields.port, 1, kHighestPort);
  if (!port) {
    reached_ = true;  // it is not the server that is to blame
    wsChat_Error("The port must be a number from 1 to " + std::to_string(kHighestPort) + ".");
    return;
  }
  WaitFor(kWelcomeMilliseconds);
  const std::string host(BareHost(fields.server));
  const int number = static_cast<int>(*port);
  wsChat_.Connect({host, number, fields.tls,
                   fields.tls ? ways_.secure.Trusted(host, number) : std::string(),
                   ways_.options.connection});
}

ConnectFields Connection::Strict(ConnectFields fields) const {
  const std::optional<int> port =
      fields.tls ? std::nullopt
                 : ways_.secure.StrictPort(BareHost(fields.server), std::time(nullptr));
  if (!port) return fields;
  queue_.QueueLine(
      "\r\n\0033* " + fields.server + " is reached by TLS only, at port " + std::to_string(*port),
      Kind::kStatus);
  fields.tls = true;
  fields.port = std::to_string(*port);
  return fields;
}

void Connection::StrictTransport(std::optional<int> port,
                                 std::optional<SecureServers::Seconds> duration) {
  const std::string host(BareHost(fields_.server));
  const SecureServers::Seconds now = std::time(nullptr);
  if (!wsChat_.IsSecure()) {
    if (!port) return;
    // Kept only once the secure way was seen to work.
    fields_.tls = true;
    fields_.port = std::to_string(*port);
    wished_.tls = true;
    wished_.port = fields_.port;
    queue_.QueueLine("\r\n\0033* " + fields_.server + " wants to be reached by TLS only",
                     Kind::kStatus);
    Connect(ConnectFields(fields_));
    return;
  }
  const int securePort = static_cast<int>(LeadingNumber(fields_.port));
  // Where only the user vouches for the certificate, it may be anybody who asks.
  if (duration && ways_.secure.Trusted(host, securePort).empty()) {
    ways_.secure.SetStrict(host, securePort, *duration, now);
  }
}

void Connection::wsChat_Untrusted(const ServerCertificate& certificate) {
  const std::string host(BareHost(fields_.server));
  const int port = static_cast<int>(LeadingNumber(fields_.port));
  const bool isChanged = !ways_.secure.Trusted(host, port).empty();
  reached_ = true;
  wsChat_Error("The certificate of " + host + " is not to be trusted: " + certificate.fault);
  // Nobody may be there to answer when the connection is made again by itself.
  reconnect_.Stop();
  if (stopped_) return;
  const unsigned number = session_.number;
  const bool trust = views_.dialogs.Question(
      Icon::kCritical,
      (isChanged ? host + " shows another certificate than the one that you trust.\r\r" : "") +
          host + " cannot prove who it is: " + certificate.fault + "\r\rIts certificate is for " +
          certificate.subject + ", made by " + certificate.issuer +
          ".\rSHA-256: " + certificate.fingerprint + "\r\rTrust this one certificate for " +
          EndpointText(host, port) + " from now on?");
  if (!trust || stopped_ || session_.number != number) return;
  ways_.secure.Trust(host, port, certificate.fingerprint);
  views_.window.ShowHint("");
  Connect(ConnectFields(fields_));
}

void Connection::Disconnect() {
  SetButton(ConnectCaption::kConnect, true);
  if (!session_.currentRoom.empty())
    SendRaw(PrivMsg(session_.currentRoom, Farewell(ways_.webAddress)));
  SendRaw("QUIT");
  quitSent_ = true;
  WaitFor(kQuitMilliseconds);
}

void Connection::cmdConnectCancel_Click() {
  afterWelcome_ = {};
  if (reconnect_.IsWaiting()) {
    reconnect_.Stop();
    views_.panel.ShowCancelButton(false);
    views_.window.SetStatusPanel("Status - Disconnected");
    views_.panel.SetLoginStatus("Status - Disconnected");
    return;
  }
  if (session_.connectionState != ConnectionState::kConnecting) return;
  quitSent_ = true;  // so that the end is no news
  EndQuietly();
}

bool Connection::IsWaiting() const {
  const bool watches =
      ways_.options.reconnect && session_.connectionState == ConnectionState::kRegistered;
  return deadline_ != kNoDeadline || reconnect_.IsWaiting() || watches;
}

void Connection::Stop() {
  stopped_ = true;
  reconnect_.Stop();
}

void Connection::tmrConnect_Timer() {
  if (reconnect_.IsDue(clock_.Ticks())) return ConnectAgain();
  if (reconnect_.IsWaiting()) ShowCountdown();
  WatchLink();
  if (deadline_ == kNoDeadline || clock_.Ticks() < deadline_) return;
  deadline_ = kNoDeadline;
  if (quitSent_) {
    EndQuietly();
  } else {
    wsChat_Error(std::string(kSilentServer) + (reached_ ? "." : ""));
  }
}

void Connection::ConnectAgain() {
  reconnect_.Stop();
  Connect(Strict(wished_));
  afterWelcome_ = {ServerHost(), lastRoom_};
}

void Connection::ShowCountdown() {
  const int seconds = reconnect_.SecondsLeft(clock_.Ticks());
  if (std::exchange(shownSeconds_, seconds) == seconds) return;
  const std::string text = "Status - Connecting again in " + std::to_string(seconds) + " s";
  views_.window.SetStatusPanel(text);
  views_.panel.SetLoginStatus(text);
}

void Connection::WatchLink() {
  if (!ways_.options.reconnect || quitSent_ ||
      session_.connectionState != ConnectionState::kRegistered) {
    return;
  }
  const LinkWatch::Verdict verdict = link_.Look(clock_.Ticks());
  if (verdict == LinkWatch::Verdict::kAsk) SendRaw("PING :" + std::string(kLinkToken));
  if (verdict == LinkWatch::Verdict::kDead) wsChat_Error("The server does not answer any more.");
}

bool Connection::MayReconnect() const {
  return ways_.options.reconnect && wasWelcome_ && !quitSent_ && !stopped_;
}

void Connection::EnterRoom(const std::string& room) {
  if (session_.connectionState == ConnectionState::kRegistered) {
    SendRaw(Join(room));
    return;
  }
  // A click that led nowhere has told which server was meant.
  afterWelcome_ = {std::string(BareHost(wished_.server)), room};
  views_.window.ShowHint(room + " will be entered after the server's welcome.");
}

void Connection::wsChat_Connect() {
  reached_ = true;
  if (wsChat_.IsSecure()) queue_.QueueLine("\r\n\0033* Secured by TLS", Kind::kStatus);
  if (up_) up_();
  SendRaw(Nick(fields_.nick));
  // The fourth parameter is the last, so it needs no colon in front (RFC 1459, section 4.1.3).
  SendRaw("USER plenty of excellent qel_" + VersionNumber());
  views_.panel.SetLoginStatus("Status - Connected : Logging in");
}

void Connection::wsChat_DataArrival(std::string_view received) {
  link_.Heard();
  // The watch may be wanted only since the session began.
  if (ways_.options.reconnect && wake_) wake_();
  receive_(received, session_.currentNick);
}

void Connection::wsChat_Error(const std::string& description) {
  if (IsEndExpected()) {
    EndQuietly();
    return;
  }
  queue_.QueueLine("\r\n\0034* ERROR : " + description + "\r\n", Kind::kStatus);
  queue_.QueueLine(kDisconnectedLine, Kind::kDisconnected);
  if (session_.endReason.empty()) {
    // A sentence says all that there is to say.
    const bool isClear = reached_ || description.ends_with('.');
    session_.endReason = isClear ? description
                                 : description + ": " + fields_.server + ", port " + fields_.port +
                                       ". Check both, or try another server.";
  }
  wsChat_.Close();
  EndSession();
}

void Connection::wsChat_Close() {
  if (IsEndExpected()) {
    EndQuietly();
  } else {
    wsChat_Error("The server closed the connection.");
  }
}

bool Connection::IsEndExpected() const {
  return quitSent_ || session_.connectionState == ConnectionState::kDisconnected;
}

void Connection::EndQuietly() {
  wsChat_.Close();
  // A closing notice has said it already.
  if (session_.connectionState != ConnectionState::kDisconnected) {
    queue_.QueueLine(kDisconnectedLine, Kind::kDisconnected);
  }
  EndSession();
}

void Connection::Welcomed() {
  deadline_ = quitSent_ ? deadline_ : kNoDeadline;
  wasWelcome_ = true;
  reconnect_.Made();
  link_.Heard();
  if (wake_) wake_();
  session_.connectedSince = clock_.Ticks();
  SetButton(ConnectCaption::kDisconnect, true);
  views_.panel.ShowCancelButton(false);
  views_.panel.SetNickFieldsEnabled(true);
  views_.window.SetStatusPanel("Status - Connected");
  views_.panel.SetLoginStatus("Status - Connected");
  views_.window.SetWindowCaption(VersionText() + " [NICK : " + session_.currentNick + "]");
  session_.connectionState = ConnectionState::kRegistered;
  views_.window.SessionChanged();
  if (welcome_) welcome_();
  const auto [host, room] = std::exchange(afterWelcome_, {});
  if (!room.empty() && host == ServerHost()) SendRaw(Join(room));
}

void Connection::NickInUse(const std::string& text) {
  queue_.QueueLine("\r\n\0034" + text, Kind::kStatus);
  OfferNextNick();
}

void Connection::NickRefused(const std::string& text) {
  if (++refusedNicks_ > kMostRefusedNicks) {
    wasWelcome_ = false;  // it would be refused again
    session_.endReason = text;
    wsChat_Error(text);
    return;
  }
  NickInUse(text);
}

void Connection::OfferNextNick() {
  if (!IsBlank(fields_.alternateNick) && !session_.altNickUsed) {
    session_.altNickUsed = true;
  } else {
    fields_.alternateNick = "Brindle" + std::to_string(RandomBetween(1, kHighestNickNumber));
    views_.panel.SetAlternateNick(fields_.alternateNick);
  }
  SendRaw(Nick(fields_.alternateNick));
}

void Connection::BannedFromServer(const std::string& text) {
  queue_.QueueLine("\r\n\0034" + text, Kind::kStatus);
  session_.endReason = text;
  wasWelcome_ = false;  // and to come back would be of no use
  SetButton(ConnectCaption::kConnect, true);
}

void Connection::EndAttempt(const std::string& reason) {
  wasWelcome_ = false;  // it would end like this again
  session_.endReason = reason;
  wsChat_Error(reason);
}

std::string Connection::ServerHost() const { return std::string(BareHost(fields_.server)); }

void Connection::ServerError(const std::string& text) {
  if (quitSent_) return;
  session_.endReason = text;
}

void Connection::ClosingNotice() {
  if (!quitSent_ && !session_.endReason.empty()) {
    queue_.QueueLine("\r\n\0034" + session_.endReason, Kind::kStatus);
  }
  queue_.QueueLine(kDisconnectedLine, Kind::kDisconnected);
  EndSession();
}

void Connection::EndSession() {
  const bool wasThere = session_.connectionState != ConnectionState::kDisconnected;
  if (!session_.currentRoom.empty()) lastRoom_ = session_.currentRoom;
  session_.connectionState = ConnectionState::kDisconnected;
  session_.currentRoom.clear();
  deadline_ = wsChat_.IsConnected() ? deadline_ : kNoDeadline;
  SetButton(ConnectCaption::kConnect, true);
  views_.panel.ShowCancelButton(false);
  views_.panel.SetNickFieldsEnabled(true);
  views_.panel.SetLoginStatus("Status - Disconnected");
  views_.window.SetStatusPanel("Status - Disconnected");
  views_.window.SetWindowCaption(VersionText());
  views_.window.SessionChanged();
  if (wasThere && MayReconnect()) reconnect_.Lost(clock_.Ticks());
  if (reconnect_.IsWaiting()) {
    shownSeconds_ = 0;
    views_.panel.ShowCancelButton(true);
    if (wake_) wake_();
  }
  if (quitSent_ || session_.endReason.empty()) return;
  views_.panel.SetConnectTrouble(session_.endReason);
  views_.window.ShowHint("Disconnected: " + session_.endReason);
}

void Connection::WaitFor(int milliseconds) {
  deadline_ = clock_.Ticks() + milliseconds;
  if (wake_) wake_();
}

void Connection::SetButton(ConnectCaption caption, bool enabled) {
  caption_ = caption;
  views_.panel.SetConnectButton(caption, enabled);
}

}  // namespace brindle
