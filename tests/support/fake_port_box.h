#pragma once
// Stands in for txtConnectPort.

#include <string>

#include "irc/server_entries.h"

namespace brindle {

class FakePortBox : public ServerEntriesView {
 public:
  void SetPort(const std::string& text) override { port = text; }
  std::string port = "6667";
};

}  // namespace brindle
