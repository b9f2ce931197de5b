#include "settings/options.h"

#include <algorithm>
#include <cstdint>

#include "base/text.h"

namespace brindle {
namespace {

constexpr OptionBox kMiscBoxes[] = {
    {"Send notices to status window", &Options::noticesToStatus},
    {"Send mesagess to status window", &Options::messagesToStatus},
    {"Scan chat for servers", &Options::scanChatForServers},
    {"Request accesscode if found", &Options::requestAccessCode},
    {"Make window stay on top", &Options::stayOnTop},
};
constexpr OptionBox kListBoxes[] = {
    {"View channel on list tab", &Options::channelOnListTab},
    {"Deselect selected after requested", &Options::deselectAfterRequested},
};
constexpr OptionBox kRoomBoxes[] = {
    {"Include timestamp on chat lines", &Options::timestampChatLines},
    {"Try to enter room upon adding it", &Options::enterRoomUponAdding},
};
constexpr OptionBox kFindBoxes[] = {
    {"Clear finds list on program exit", &Options::clearFindsOnExit},
    {"Remove inactive finds after", &Options::removeInactiveFinds},
};
constexpr OptionBox kChatBoxes[] = {
    {"Keep digits that stand apart from a colour mark", &Options::keepDigitsApart},
    {"Ask before saying an unknown command", &Options::askUnknownCommand},
};

constexpr OptionBox kThemeBoxes[] = {
    {"Keep chat colours readable", &Options::readableChatColours},
};

constexpr OptionBox kConnectionBoxes[] = {
    {"Connect again when the connection is lost", &Options::reconnect},
    {"Use what newer servers offer", &Options::useNewerProtocol},
    {"Catch up when many lines wait", &Options::catchUp},
    {"Ask before requests to a server that is not in the room", &Options::askAbsentServer},
    {"Answer questions about this program", &Options::answerCtcp},
    {"Tell NickServ the password where a server has no accounts", &Options::tellNickServ},
};

constexpr long long kLargestColour = 0xFFFFFF;
constexpr const char* kDaysKey = "days";
constexpr const char* kThemeKey = "theme";
constexpr const char* kLinesKey = "lines";

std::string StateText(bool on) { return on ? "1" : "0"; }

std::string SoundKey(size_t slot) { return "sound" + std::to_string(slot); }

bool ReadState(const SettingsText& settings, const char* section, const char* caption, bool now) {
  return settings.ReadNumber(section, caption, StateText(now)) != 0;
}

void ReadGroup(const SettingsText& settings, const OptionGroup& group, Options& options) {
  for (const OptionBox& box : group.boxes) {
    bool& state = options.*box.state;
    state = ReadState(settings, group.section, box.caption, state);
  }
}

void ReadSounds(const SettingsText& settings, Options& options) {
  for (size_t slot = 0; slot < kSoundSlots; ++slot) {
    SoundOption& sound = options.sounds[slot];
    sound.on = ReadState(settings, kSoundSection, kSoundCaptions[slot], sound.on);
    sound.path =
        TrimBlanks(settings.Read(kSoundSection, SoundKey(slot), sound.path, ValueForm::kPlain));
  }
}

Colour ColourFromNumber(std::uint32_t number) {
  return {static_cast<std::uint8_t>(number & 0xFFU),
          static_cast<std::uint8_t>(number >> 8U & 0xFFU),
          static_cast<std::uint8_t>(number >> 16U & 0xFFU)};
}

void ReadColours(const SettingsText& settings, Options& options) {
  for (const ColourOption& option : kColourOptions) {
    Colour& colour = options.*option.colour;
    const long long number = settings.ReadNumber(option.section, option.key, ColourText(colour));
    if (number >= 0 && number <= kLargestColour) {
      colour = ColourFromNumber(static_cast<std::uint32_t>(number));
    }
  }
}

void AppendGroup(const OptionGroup& group, const Options& options, std::vector<Setting>& settings) {
  for (const OptionBox& box : group.boxes) {
    settings.push_back({group.section, box.caption, StateText(options.*box.state)});
  }
}

}  // namespace

const OptionGroup kMiscOptions = {"misc options", kMiscBoxes};
const OptionGroup kListOptions = {"list options", kListBoxes};
const OptionGroup kRoomOptions = {"room options", kRoomBoxes};
const OptionGroup kFindOptions = {"find options", kFindBoxes};
const OptionGroup kChatOptions = {"chat options", kChatBoxes};
const OptionGroup kThemeOptions = {"theme options", kThemeBoxes};
const OptionGroup kConnectionOptions = {kConnectionSection, kConnectionBoxes};

const std::array<const char*, kSoundSlots> kSoundCaptions = {
    "Play when someone joins channel", "Play when someone parts channel",
    "Play when notice is recieved",    "Play when msg is received",
    "Play when server is added",       "Play on irc server connection",
    "Play on irc server disconnection"};

const std::array<ColourOption, 4> kColourOptions = {
    {{"list", "forecolor", &Options::listForecolor},
     {"list", "backcolor", &Options::listBackcolor},
     {"room", "forecolor", &Options::roomForecolor},
     {"room", "backcolor", &Options::roomBackcolor}}};

Options ReadOptions(const SettingsText& settings) {
  Options options;
  for (const OptionGroup* group : {&kMiscOptions, &kListOptions, &kRoomOptions, &kFindOptions,
                                   &kChatOptions, &kThemeOptions, &kConnectionOptions}) {
    ReadGroup(settings, *group, options);
  }
  options.connection = ReadConnectionOptions(settings);
  ReadSounds(settings, options);
  // A row that the days box does not have is no selection.
  const long long index =
      settings.ReadNumber(kFindOptions.section, kDaysKey, std::to_string(options.findDaysIndex));
  if (index >= 0 && index < kMostFindDays) options.findDaysIndex = static_cast<int>(index);
  const long long theme = settings.ReadNumber(kThemeOptions.section, kThemeKey, "0");
  if (theme >= 0 && theme <= static_cast<long long>(ThemeChoice::kDark)) {
    options.theme = static_cast<ThemeChoice>(theme);
  }
  const long long lines =
      settings.ReadNumber(kChatOptions.section, kLinesKey, std::to_string(options.chatLines));
  if (lines >= kFewestChatLines && lines <= kMostChatLines) {
    options.chatLines = static_cast<int>(lines);
  }
  ReadColours(settings, options);
  return options;
}

void AppendOptions(const Options& options, std::vector<Setting>& settings) {
  AppendGroup(kMiscOptions, options, settings);
  for (size_t slot = 0; slot < kSoundSlots; ++slot) {
    const SoundOption& sound = options.sounds[slot];
    settings.push_back({kSoundSection, kSoundCaptions[slot], StateText(sound.on)});
    // The blank in front keeps an emptied path from reading back as the path to start with.
    settings.push_back({kSoundSection, SoundKey(slot), " " + sound.path, ValueForm::kPlain});
  }
  AppendGroup(kListOptions, options, settings);
  AppendGroup(kRoomOptions, options, settings);
  AppendGroup(kFindOptions, options, settings);
  settings.push_back({kFindOptions.section, kDaysKey, std::to_string(options.findDaysIndex)});
  AppendGroup(kChatOptions, options, settings);
  settings.push_back({kChatOptions.section, kLinesKey, std::to_string(options.chatLines)});
  AppendGroup(kThemeOptions, options, settings);
  settings.push_back(
      {kThemeOptions.section, kThemeKey, std::to_string(static_cast<int>(options.theme))});
  AppendGroup(kConnectionOptions, options, settings);
  AppendConnectionOptions(options.connection, settings);
}

std::optional<Colour> PickedColour(const Options& options, ColourSlot slot) {
  const auto colour = kColourOptions[static_cast<size_t>(slot)].colour;
  if (options.*colour == Options().*colour) return std::nullopt;
  return options.*colour;
}

void PickColour(ColourSlot slot, Colour colour, Options& options, SettingsFile& settings) {
  const ColourOption& option = kColourOptions[static_cast<size_t>(slot)];
  options.*option.colour = colour;
  settings.WriteSetting(option.section, option.key, ColourText(colour));
}

std::string ColourText(Colour colour) {
  return std::to_string(colour.red | colour.green << 8U | colour.blue << 16U);
}

}  // namespace brindle
