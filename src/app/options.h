#pragma once
// The user's options, each starting in the state it has when nothing is stored yet.

#include <array>
#include <string>

#include "base/colour.h"

namespace brindle {

// The seven sounds, in the order of the boxes on the options page.
enum class SoundSlot {
  kJoin = 0,
  kPart = 1,
  kNotice = 2,
  kMessage = 3,
  kServerAdded = 4,
  kConnected = 5,
  kDisconnected = 6,
};
inline constexpr size_t kSoundSlots = 7;

struct SoundOption {
  bool on = true;
  std::string path;  // of a wave file; may be empty or name a missing file
};

struct Options {
  // "Send notices to status window" and "Send mesagess to status window"
  bool noticesToStatus = false;
  bool messagesToStatus = false;
  // "Scan chat for servers" and "Request accesscode if found"
  bool scanChatForServers = true;
  bool requestAccesscodeIfFound = false;
  // "Deselect selected after requested"
  bool deselectAfterRequested = true;
  // "Include timestamp on chat lines" and "Try to enter room upon adding it"
  bool timestampChatLines = true;
  bool enterRoomUponAdding = true;
  std::array<SoundOption, kSoundSlots> sounds;
  // The room view's background, and the colour that stands in for text of that same colour.
  Colour roomBackcolor = kWhite;
  Colour roomForecolor = kBlack;
};

}  // namespace brindle
