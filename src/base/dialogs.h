#pragma once
// The boxes that interrupt the user. Every modal box of the program goes through this seam, so that
// tests can answer them and see their texts.

#include <optional>
#include <string>

#include "base/colour.h"

namespace brindle {

enum class Icon { kInformation, kExclamation, kCritical };

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // A text and an OK button; returns when the user has closed it.
  virtual void Notice(Icon icon, const std::string& text) = 0;
  // A text with Yes and No; true for Yes.
  virtual bool Question(Icon icon, const std::string& text) = 0;
  // Asks for one line of text; nothing when the user cancelled.
  virtual std::optional<std::string> Input(const std::string& prompt) = 0;
  // Asks for an existing file; nothing when the user cancelled. `filter` is a list of
  // "description|patterns" pairs, all joined with "|", patterns joined with ";".
  virtual std::optional<std::string> OpenFile(const std::string& filter) = 0;
  // Asks for a colour, starting from `current`; nothing when the user cancelled.
  virtual std::optional<Colour> PickColour(Colour current) = 0;
};

}  // namespace brindle
