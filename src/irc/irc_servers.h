#pragma once
// The IRC servers that the user has entered: the items of cmbConnectServer, each with its port.

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/dialogs.h"
#include "base/observed_list.h"
#include "irc/connection.h"
#include "settings/stored_lists.h"

namespace brindle {

class IrcServers {
 public:
  IrcServers(ConnectView& view, Dialogs& dialogs) : view_(view), dialogs_(dialogs) {}

  // In order of adding.
  const ObservedList<IrcServer>& Entries() const { return entries_; }
  void Add(IrcServer server) { entries_.Add(std::move(server)); }

  // True for an entry that is reached by TLS.
  bool IsTls(std::string_view host, int port) const;

  // Asks for host and port and adds them, or says what is wrong with the answer.
  void cmdConnectAdd_Click();

  // `selected` is the row of the selected entry.
  void cmdConnectRemove_Click(std::optional<size_t> selected);
  void cmbConnectServer_Click(std::optional<size_t> selected);
  // The usual port of the one way becomes that of the other.
  void chkConnectTls_Click(bool on, std::string_view port, std::optional<size_t> selected);
  void txtConnectPort_Change(std::string_view text, std::optional<size_t> selected);

 private:
  ConnectView& view_;
  Dialogs& dialogs_;
  ObservedList<IrcServer> entries_;
};

}  // namespace brindle
