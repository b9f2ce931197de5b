#pragma once
// The user's options, each starting in the state it has when nothing is stored yet, and how they
// are kept in the settings file: every box under its own caption, so that renaming a caption starts
// that option afresh.

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "settings/connection_options.h"
#include "settings/settings_file.h"

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

// The colours of the windows: as the desktop has them, or as chosen.
enum class ThemeChoice { kSystem = 0, kLight = 1, kDark = 2 };

// How many days the days box of the finds offers: 1 to this.
inline constexpr int kMostFindDays = 30;

// How many lines a chat view may be told to keep.
inline constexpr int kFewestChatLines = 1'000;
inline constexpr int kMostChatLines = 10'000'000;

struct Options {
  // chkOptionsMisc
  bool noticesToStatus = false;
  bool messagesToStatus = false;
  bool scanChatForServers = true;
  bool requestAccessCode = false;
  bool stayOnTop = false;
  // chkOptionsFind
  bool clearFindsOnExit = false;
  bool removeInactiveFinds = false;
  // chkOptionsList
  bool channelOnListTab = false;
  bool deselectAfterRequested = true;
  // chkOptionsRoom
  bool timestampChatLines = true;
  bool enterRoomUponAdding = true;
  // chkOptionsChat
  bool keepDigitsApart = false;
  bool askUnknownCommand = false;  // a new user's first start turns it on
  int chatLines = 100'000;         // spnOptionsLines
  // chkOptionsConnection; with all of these off, nothing goes over the wire that RFC 1459 does not
  // ask for
  bool reconnect = false;
  bool useNewerProtocol = false;  // IRCv3
  bool catchUp = false;
  bool askAbsentServer = false;
  bool answerCtcp = false;
  bool tellNickServ = false;
  ConnectionOptions connection = {};
  // chkOptionsTheme and cmbOptionsTheme
  bool readableChatColours = true;
  ThemeChoice theme = ThemeChoice::kSystem;
  // chkOptionsSound and txtOptionsSound
  std::array<SoundOption, kSoundSlots> sounds = {{{true, ""},
                                                  {true, ""},
                                                  {true, "c:\\windows\\media\\notify.wav"},
                                                  {true, "c:\\windows\\media\\ding.wav"},
                                                  {true, "c:\\windows\\media\\ding.wav"},
                                                  {true, "c:\\windows\\media\\chimes.wav"},
                                                  {true, "c:\\windows\\media\\tada.wav"}}};
  // The selected row of the days box cmbOptionsFinds; row 0 says 1.
  int findDaysIndex = 1;
  // The mail list's colours, the room view's background, and the colour that stands in for text of
  // that same colour.
  Colour listForecolor = kBlack;
  Colour listBackcolor = kWhite;
  Colour roomForecolor = kBlack;
  Colour roomBackcolor = kWhite;

  int FindDays() const { return findDaysIndex + 1; }
};

// A box of a group: its caption, which is also its key, and its state.
struct OptionBox {
  const char* caption;
  bool Options::*state;
};

struct OptionGroup {
  const char* section;
  std::span<const OptionBox> boxes;  // by index
};

extern const OptionGroup kMiscOptions;
extern const OptionGroup kListOptions;
extern const OptionGroup kRoomOptions;
extern const OptionGroup kFindOptions;
extern const OptionGroup kChatOptions;
extern const OptionGroup kThemeOptions;
extern const OptionGroup kConnectionOptions;

// The captions of the sound boxes, by slot.
inline constexpr const char* kSoundSection = "sound options";
extern const std::array<const char*, kSoundSlots> kSoundCaptions;

// One of the four colours that the user picks.
struct ColourOption {
  const char* section;
  const char* key;
  Colour Options::*colour;
};
enum class ColourSlot { kListForecolor, kListBackcolor, kRoomForecolor, kRoomBackcolor };
extern const std::array<ColourOption, 4> kColourOptions;  // by slot

// The stored options; what is not stored is in the state that it starts in.
Options ReadOptions(const SettingsText& settings);

// Everything that is stored when the program ends, in order; the colours are not part of it.
void AppendOptions(const Options& options, std::vector<Setting>& settings);

// A colour that the user has picked. The one to start with is none: windows then take that of the
// theme.
std::optional<Colour> PickedColour(const Options& options, ColourSlot slot);

// Sets one colour and stores it at once.
void PickColour(ColourSlot slot, Colour colour, Options& options, SettingsFile& settings);

// A colour as the settings hold it: a decimal number with red in its low byte.
std::string ColourText(Colour colour);

}  // namespace brindle
