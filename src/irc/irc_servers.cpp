#include "irc/irc_servers.h"

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "settings/endpoint.h"

namespace brindle {
namespace {

constexpr const char* kPrompt =
    "Enter the server and port. When you are done it should look something like this :"
    "\r\rirc.brindle.example:6667";
constexpr const char* kNoServer = "No server entered. Please try again.";
constexpr const char* kNoPort = "No port entered. Please try again.";
constexpr const char* kPortNotNumeric = "The port should be numeric. Please try again.";

constexpr const char* kPlainPort = "6667";
constexpr const char* kTlsPort = "6697";  // RFC 7194

using Limits = std::numeric_limits<std::int32_t>;

// What is wrong with an answer, cut at its colons; nothing when it will do.
const char* FaultOf(const std::vector<std::string_view>& parts) {
  if (parts.size() < 2) return kNoPort;
  if (IsBlank(parts[0])) return kNoServer;
  if (IsBlank(parts[1])) return kNoPort;
  return IsNumericText(parts[1]) ? nullptr : kPortNotNumeric;
}

}  // namespace

void IrcServers::cmdConnectAdd_Click() {
  const std::string answer = dialogs_.Input(kPrompt).value_or("");
  const auto parts = EndpointParts(answer);
  if (const char* fault = FaultOf(parts)) {
    dialogs_.Notice(Icon::kExclamation, fault);
    return;
  }
  // A number beyond all bounds leaves the new entry without a port.
  Add({LowerCase(parts[0]), PortNumber(parts[1], Limits::min(), Limits::max()).value_or(0)});
}

bool IrcServers::IsTls(std::string_view host, int port) const {
  return std::any_of(entries_.Items().begin(), entries_.Items().end(), [&](const IrcServer& known) {
    return known.tls && known.port == port && EqualsIgnoringCase(known.host, host);
  });
}

void IrcServers::cmdConnectRemove_Click(std::optional<size_t> selected) {
  if (!selected) return;
  entries_.RemoveAt(*selected);
  view_.SetPort("");
}

void IrcServers::cmbConnectServer_Click(std::optional<size_t> selected) {
  if (!selected) return;
  view_.SetPort(std::to_string(entries_[*selected].port));
  view_.SetTls(entries_[*selected].tls);
}

void IrcServers::txtConnectPort_Change(std::string_view text, std::optional<size_t> selected) {
  const auto port = PortNumber(text, Limits::min(), Limits::max());
  if (!port || !selected) return;
  IrcServer server = entries_[*selected];
  server.port = *port;
  entries_.Replace(*selected, server);
}

void IrcServers::chkConnectTls_Click(bool on, std::string_view port,
                                     std::optional<size_t> selected) {
  if (selected) {
    IrcServer server = entries_[*selected];
    server.tls = on;
    entries_.Replace(*selected, server);
  }
  if (port == (on ? kPlainPort : kTlsPort)) view_.SetPort(on ? kTlsPort : kPlainPort);
}

}  // namespace brindle
