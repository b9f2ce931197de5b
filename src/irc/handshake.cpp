#include "irc/handshake.h"

#include <algorithm>

#include "base/text.h"
#include "irc/sasl.h"

namespace brindle {
namespace {

constexpr std::string_view kTagBringers[] = {"message-tags", "server-time", "account-tag",
                                             "labeled-response", "batch"};
constexpr char kOpenLine[] =
    "The password is not sent over a connection that anybody can read: turn on TLS for this "
    "server.";
constexpr char kNoPassword[] =
    "There is no password for the account yet: set it on the Connection page of the options.";
constexpr char kNoAccounts[] = "This server takes no proof of an account: you are here without it.";
constexpr char kRed[] = "\0034";

bool IsLoopback(std::string_view host) {
  if (EqualsIgnoringCase(host, "localhost") || host == "::1") return true;
  const std::vector<std::string_view> parts = Split(host, ".");
  constexpr size_t kParts = 4;
  return parts.size() == kParts && parts.front() == "127" &&
         std::all_of(parts.begin(), parts.end(), [](std::string_view part) {
           return IsAllDigits(part) && WholeNumber(part, 0, 255);
         });
}

// A word of a line that has a source: servers may leave the source out.
std::string Words(const IrcLine& line) {
  const std::vector<std::string_view> parameters = ParametersOf(line.Received());
  return parameters.size() < 2 ? "" : std::string(parameters.back());
}

}  // namespace

Handshake::Handshake(const Session& session, Connection& connection, SendQueue& lines,
                     Screen screen, const Options& options)
    : session_(session),
      connection_(connection),
      lines_(lines),
      screen_(screen),
      options_(options) {
  connection.OnUp([this] { Begin(); });
  connection.OnWelcome([this] { Welcomed(); });
}

bool Handshake::BringsTags() const {
  return active_ &&
         std::any_of(std::begin(kTagBringers), std::end(kTagBringers),
                     [this](std::string_view name) { return capabilities_.MayBeOn(name); });
}

void Handshake::Begin() {
  const bool account = options_.connection.proof != AccountProof::kNone;
  active_ = options_.useNewerProtocol || account;
  proof_ = Proof::kNone;
  capabilities_.Reset();
  lines_.Own().EndSession();
  if (!active_) return;
  connection_.SendRaw(capabilities_.Begin(!account ? Capabilities::Want::kNewer
                                          : options_.useNewerProtocol
                                              ? Capabilities::Want::kBoth
                                              : Capabilities::Want::kAccount));
}

void Handshake::Capability(const IrcLine& line) {
  const Capabilities::Step step = capabilities_.Take(line.Received());
  if (!step.understood) {
    Status("The server's answer about what it can do makes no sense: " + line.Line(), kRed);
  }
  if (step.listed && !KeepStrictTransport()) return;
  for (const std::string& next : step.send) connection_.SendRaw(next);
  lines_.Own().SetModes(IsOn("echo-message"), IsOn("labeled-response"));
  if (step.settled) StartProof();
}

void Handshake::NoCapabilities() { capabilities_.Reset(); }

bool Handshake::KeepStrictTransport() {
  const std::optional<std::string> value = capabilities_.Offered("sts");
  if (!value) return true;
  const std::optional<StrictTransport> strict = ReadStrictTransport(*value);
  const unsigned number = session_.number;
  if (!strict) {
    Status("What the server says about TLS makes no sense: sts=" + *value, kRed);
  } else {
    connection_.StrictTransport(strict->port, strict->duration);
  }
  return session_.number == number && session_.connectionState != ConnectionState::kDisconnected;
}

void Handshake::StartProof() {
  const AccountProof proof = options_.connection.proof;
  if (proof == AccountProof::kNone || !IsOn("sasl")) return EndNegotiation();
  const std::string_view mechanism = MechanismOf(proof);
  const std::string offered = capabilities_.Offered("sasl").value_or("");
  if (!TakesMechanism(offered, mechanism)) {
    return Refuse("the server takes " + offered + ", not " + std::string(mechanism));
  }
  if (proof == AccountProof::kPassword && !IsPrivate()) return connection_.EndAttempt(kOpenLine);
  proof_ = Proof::kOffered;
  connection_.SendRaw("AUTHENTICATE " + std::string(mechanism));
}

void Handshake::EndNegotiation() { connection_.SendRaw("CAP END"); }

void Handshake::Authenticate(const IrcLine& line) {
  if (proof_ == Proof::kOffered && Words(line) == "+") return Answer();
  if (proof_ == Proof::kOffered || proof_ == Proof::kAnswered) {
    Refuse("the server asks for a proof that makes no sense");
  }
}

void Handshake::Answer() {
  const ConnectionOptions& options = options_.connection;
  proof_ = Proof::kAnswered;
  // A certificate speaks for itself; the name says which of its accounts is meant.
  std::string message = options.account;
  if (options.proof == AccountProof::kPassword) {
    const std::string password = password_ ? password_() : "";
    if (password.empty()) return connection_.EndAttempt(kNoPassword);
    message = PlainMessage(options.account, password);
  }
  for (const std::string& line : AuthenticateLines(message)) connection_.SendRaw(line);
}

void Handshake::AccountReply(const IrcLine& line) {
  const std::string_view numeric = line.Word(1);
  const bool isProving = proof_ == Proof::kOffered || proof_ == Proof::kAnswered;
  if (!isProving || numeric == "900" || numeric == "901") return Status(Words(line));
  if (numeric == "908") {
    Status("The server takes " + std::string(WithoutColon(line.Word(3))));
  } else if (numeric == "903" || numeric == "907") {
    proof_ = Proof::kProven;
    Status(Words(line));
    EndNegotiation();
  } else {
    Refuse(Words(line));
  }
}

bool Handshake::MayBegin() {
  if (proof_ != Proof::kOffered && proof_ != Proof::kAnswered) return true;
  Refuse("the server began the session without it");
  return false;
}

void Handshake::Welcomed() {
  const AccountProof proof = options_.connection.proof;
  if (!active_ || proof == AccountProof::kNone || proof_ == Proof::kProven) return;
  if (options_.tellNickServ && proof == AccountProof::kPassword) return TellNickServ();
  screen_.window.ShowHint(kNoAccounts);
}

void Handshake::TellNickServ() {
  if (!IsPrivate()) return screen_.window.ShowHint(kOpenLine);
  const std::string password = password_ ? password_() : "";
  if (password.empty()) return screen_.window.ShowHint(kNoPassword);
  const std::string& account = options_.connection.account;
  lines_.SendTyped(
      PrivMsg("NickServ", "IDENTIFY " + account + (account.empty() ? "" : " ") + password), {});
}

void Handshake::Refuse(const std::string& words) {
  connection_.EndAttempt("Account refused: " + words);
}

void Handshake::Status(const std::string& text, const char* colour) {
  screen_.queue.QueueLine(std::string(kCrLf) + colour + text, Kind::kStatus);
}

bool Handshake::IsPrivate() const {
  // What a proxy takes for this machine is another one.
  const bool isDirect = options_.connection.proxy == ProxyKind::kNone;
  return connection_.IsSecure() || (isDirect && IsLoopback(connection_.ServerHost()));
}

}  // namespace brindle
