#include "settings/options_page.h"

#include "base/text.h"

namespace brindle {

void OptionsPage::BoxClicked(const OptionGroup& group, size_t index, bool on) {
  bool Options::*const box = group.boxes[index].state;
  options_.*box = on;
  if (box == &Options::scanChatForServers) view_.EnableRequestAccessCode(on);
  if (box == &Options::stayOnTop) view_.SetTopmost(on);
  if (box == &Options::removeInactiveFinds) view_.EnableFindDays(on);
  if (box == &Options::channelOnListTab) view_.ShowRoomOnListTab(on);
  if (box == &Options::readableChatColours) view_.ShowTheme();
}

void OptionsPage::cmdOptionsFinds_Click() {
  if (dialogs_.Question(Icon::kExclamation, "Are you sure you wish to delete your finds list?")) {
    finds_.Clear();
  }
}

void OptionsPage::cmdOptionsCertificate_Click() {
  const std::optional<std::string> path = dialogs_.OpenFile("Certificates|*.pem;*.crt");
  if (!path) return;
  options_.connection.certificatePath = *path;
  view_.ShowConnection(options_.connection);
}

void OptionsPage::cmdSoundOpen_Click(SoundSlot slot) {
  const std::optional<std::string> path = dialogs_.OpenFile("Wav Files | *.wav");
  if (!path || !files_.FileExists(*path)) return;
  // On a system where case matters, the lower-cased name may be another file, or none.
  const std::string lower = LowerCase(*path);
  const std::string& shown = files_.FileExists(lower) ? lower : *path;
  Sound(slot).path = shown;
  view_.SetSoundPath(slot, shown);
}

void OptionsPage::cmdSoundPlay_Click(SoundSlot slot) {
  const std::string& path = Sound(slot).path;
  if (files_.FileExists(path)) {
    sounds_.Play(path);
  } else {
    view_.ShowOptionsHint(path.empty() ? "No sound file is chosen."
                                       : "There is no sound file " + path);
  }
}

void OptionsPage::ColourClicked(ColourSlot slot) {
  const ColourOption& option = kColourOptions[static_cast<size_t>(slot)];
  const std::optional<Colour> picked = dialogs_.PickColour(options_.*option.colour);
  if (!picked) return;
  PickColour(slot, *picked, options_, settings_);
  view_.ShowColour(slot, *picked);
}

}  // namespace brindle
