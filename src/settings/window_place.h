#pragma once
// Where the main window stood when the program ended, kept in section "window" of the settings.

#include <optional>
#include <vector>

#include "settings/settings_file.h"

namespace brindle {

// In the toolkit's pixels. What is not known yet is nothing.
struct WindowPlace {
  struct Rect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
  };
  std::optional<Rect> rect;  // of the window when it is not maximised
  bool maximised = false;
  std::optional<int> side;      // width of the panel at the right; 0 when it is folded away
  std::optional<int> channels;  // height of the channels in it
  std::optional<int> room;      // height of the room view below the mail list
  std::optional<int> tab;
  friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

// Numbers that no window can have are left out.
WindowPlace ReadWindowPlace(const SettingsText& settings);
void AppendWindowPlace(const WindowPlace& place, std::vector<Setting>& settings);

}  // namespace brindle
