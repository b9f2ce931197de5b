#include "irc/line_kind.h"

namespace brindle {

Route RouteOf(Kind kind) {
  switch (kind) {
    case Kind::kBoth:
      return {true, true, {}};
    case Kind::kStatus:
      return {true, false, {}};
    case Kind::kRoom:
      return {false, true, {}};
    case Kind::kPrivateMessage:
      return {false, true, SoundSlot::kMessage};
    case Kind::kNotice:
      return {false, true, SoundSlot::kNotice};
    case Kind::kServerAdded:
      return {false, true, SoundSlot::kServerAdded};
    case Kind::kConnected:
      return {true, false, SoundSlot::kConnected};
    case Kind::kDisconnected:
      return {true, true, SoundSlot::kDisconnected};
    case Kind::kJoin:
      return {false, true, SoundSlot::kJoin};
    case Kind::kPart:
      return {false, true, SoundSlot::kPart};
  }
  return {};
}

}  // namespace brindle
