#pragma once
// What the program says about its controls while the mouse is over them: a line for the status bar,
// and a titled paragraph for the options. Only texts and look-ups; who moves where is the window's.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

// The status-bar line for the control of that name. Empty for the form and the panels, where the
// line is cleared; nothing for a control without a hint. `caption` is what the control reads now,
// without access-key marks.
std::optional<std::string> StatusHint(std::string_view control, std::string_view caption);

// The paragraph for an option: heading, an empty line, text. Control arrays are named by their
// group and `index`; for a control that stands alone the index does not count. `caption` is the
// box's own one.
std::optional<std::string> OptionHelp(std::string_view control, int index,
                                      std::string_view caption);

// The object names of all controls that are explained, those of an array with their index.
std::vector<std::string> ControlsWithHelp();

}  // namespace brindle
