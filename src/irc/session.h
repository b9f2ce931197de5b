#pragma once
// What the program knows about its one IRC session.

#include <string>

#include "base/clock.h"

namespace brindle {

enum class ConnectionState {
  kDisconnected = 0,
  kConnecting = 1,  // from the click on Connect until the server's welcome
  kRegistered = 2,
};

struct Session {
  ConnectionState connectionState = ConnectionState::kDisconnected;
  std::string currentNick;       // as accepted by the server
  std::string currentRoom;       // empty when in none
  TickCount connectedSince = 0;  // the moment of the welcome
  bool altNickUsed = false;      // the alternate nick was offered in this attempt
};

}  // namespace brindle
