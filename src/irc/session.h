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
  // Of ":nick!user@host " in front of what others receive from us, while it is not known.
  static constexpr size_t kAssumedSourceLength = 100;

  ConnectionState connectionState = ConnectionState::kDisconnected;
  std::string currentNick;       // as accepted by the server
  std::string currentRoom;       // empty when in none
  std::string topic;             // of the current room, as received
  TickCount connectedSince = 0;  // the moment of the welcome
  bool altNickUsed = false;      // the alternate nick was offered in this attempt
  size_t sourceLength = kAssumedSourceLength;
  unsigned number = 0;    // grows with every connection attempt
  std::string endReason;  // why the last session or stay in a room ended, in the server's words
};

}  // namespace brindle
