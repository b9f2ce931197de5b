#pragma once
// The IRC servers that the user has entered: the items of cmbConnectServer, each with its port.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/dialogs.h"
#include "base/observed_list.h"

namespace brindle {

class IrcServersView {
 public:
  virtual ~IrcServersView() = default;
  // The text of txtConnectPort.
  virtual void SetPort(const std::string& text) = 0;
};

class IrcServers {
 public:
  IrcServers(IrcServersView& view, Dialogs& dialogs) : view_(view), dialogs_(dialogs) {}

  // The hosts in order of adding. Change them through this class only.
  ObservedList& Hosts() { return hosts_; }
  size_t Size() const { return hosts_.Size(); }
  const std::string& Host(size_t index) const { return hosts_.Items()[index]; }
  std::int32_t Port(size_t index) const { return ports_[index]; }
  void Add(const std::string& host, std::int32_t port);

  // Asks for host and port and adds them, or says what is wrong with the answer.
  void cmdConnectAdd_Click();

  // `selected` is the row of the selected entry, -1 for none.
  void cmdConnectRemove_Click(int selected);
  void cmbConnectServer_Click(int selected);
  void txtConnectPort_Change(std::string_view text, int selected);

 private:
  bool Has(int index) const { return index >= 0 && static_cast<size_t>(index) < Size(); }

  IrcServersView& view_;
  Dialogs& dialogs_;
  ObservedList hosts_;
  std::vector<std::int32_t> ports_;  // one for each host
};

// The numeric `text` as a whole number, rounded to the nearest (a half to the even one); nothing
// when it is not numeric or does not fit.
std::optional<std::int32_t> PortNumber(std::string_view text, std::int32_t lowest,
                                       std::int32_t highest);

}  // namespace brindle
