#pragma once
// What the desks share: the machine and the user's stored things. None of it is owned.

#include "base/clock.h"
#include "base/dialogs.h"
#include "base/files.h"
#include "base/sound_player.h"
#include "settings/finds.h"
#include "settings/options.h"
#include "settings/settings_file.h"

namespace brindle {

struct Machine {
  Files& files;
  Dialogs& dialogs;
  const Clock& clock;
  EventPump& events;
  SoundPlayer& sounds;
};

struct StoredThings {
  SettingsFile& settings;
  Options& options;
  Finds& finds;
};

}  // namespace brindle
