#pragma once
// Stands in for txtConnectPort.

#include <string>

#include "irc/irc_servers.h"

namespace brindle {

class FakePortBox : public IrcServersView {
 public:
  void SetPort(const std::string& text) override { port = text; }
  std::string port = "6667";
};

}  // namespace brindle
