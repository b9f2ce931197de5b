#pragma once
// The kinds of lines that a session shows: each kind has its views and its sound.

#include <cstdint>
#include <optional>

#include "settings/options.h"

namespace brindle {

// Which views show a line and which sound belongs to it.
enum class Kind : std::uint8_t {
  kBoth = 0,            // status and room
  kStatus = 1,          // status
  kRoom = 2,            // room
  kPrivateMessage = 3,  // room, message sound
  kNotice = 4,          // room, notice sound
  kServerAdded = 5,     // room, server-added sound
  kConnected = 6,       // status, connection sound
  kDisconnected = 7,    // both, disconnection sound
  kJoin = 8,            // room, join sound
  kPart = 9,            // room, part sound
};

// The views and the sound of a kind; a number that is no kind has neither.
struct Route {
  bool status = false;
  bool room = false;
  std::optional<SoundSlot> sound;
};
Route RouteOf(Kind kind);

}  // namespace brindle
