#pragma once
// The options page: what its boxes, colours and sounds do at once. Everything else about an option
// happens where it is read.

#include <string>

#include "base/dialogs.h"
#include "base/files.h"
#include "base/sound_player.h"
#include "settings/finds.h"
#include "settings/options.h"
#include "settings/settings_file.h"

namespace brindle {

class OptionsPageView {
 public:
  virtual ~OptionsPageView() = default;
  // chkOptionsMisc 3, "Request accesscode if found".
  virtual void EnableRequestAccessCode(bool enabled) = 0;
  // cmbOptionsFinds.
  virtual void EnableFindDays(bool enabled) = 0;
  // Keeps the main window above all others, or no longer.
  virtual void SetTopmost(bool topmost) = 0;
  // The list tab shows the room too, or no longer.
  virtual void ShowRoomOnListTab(bool shown) = 0;
  virtual void SetSoundPath(SoundSlot slot, const std::string& path) = 0;
  // The account and the proxy.
  virtual void ShowConnection(const ConnectionOptions& choices) = 0;
  // A line in the status bar.
  virtual void ShowOptionsHint(const std::string& text) = 0;
  // The windows' colours, and how the chat treats its own.
  virtual void ShowTheme() = 0;
  // The chat views drop what is older.
  virtual void KeepChatLines(int lines) = 0;
  // A swatch, and what has that colour.
  virtual void ShowColour(ColourSlot slot, Colour colour) = 0;
};

class OptionsPage {
 public:
  OptionsPage(Options& options, SettingsFile& settings, OptionsPageView& view, Files& files,
              Finds& finds, SoundPlayer& sounds, Dialogs& dialogs)
      : options_(options),
        settings_(settings),
        view_(view),
        files_(files),
        finds_(finds),
        sounds_(sounds),
        dialogs_(dialogs) {}

  // A box was ticked or cleared, by the user or by loading.
  void BoxClicked(const OptionGroup& group, size_t index, bool on);
  void chkOptionsSound_Click(SoundSlot slot, bool on) { Sound(slot).on = on; }
  void txtOptionsSound_Change(SoundSlot slot, const std::string& path) { Sound(slot).path = path; }
  void cmbOptionsFinds_Click(int index) { options_.findDaysIndex = index; }
  void cmbOptionsTheme_Click(ThemeChoice theme) {
    options_.theme = theme;
    view_.ShowTheme();
  }
  void spnOptionsLines_Change(int lines) {
    options_.chatLines = lines;
    view_.KeepChatLines(lines);
  }

  void ConnectionChanged(const ConnectionOptions& choices) { options_.connection = choices; }
  // Asks for the file of the client certificate.
  void cmdOptionsCertificate_Click();

  // "Clear finds now": asks, then forgets the remembered searches.
  void cmdOptionsFinds_Click();
  void cmdSoundOpen_Click(SoundSlot slot);
  void cmdSoundPlay_Click(SoundSlot slot);
  // Asks for a colour, shows it and stores it at once.
  void ColourClicked(ColourSlot slot);

 private:
  SoundOption& Sound(SoundSlot slot) { return options_.sounds[static_cast<size_t>(slot)]; }

  Options& options_;
  SettingsFile& settings_;
  OptionsPageView& view_;
  Files& files_;
  Finds& finds_;
  SoundPlayer& sounds_;
  Dialogs& dialogs_;
};

}  // namespace brindle
