#pragma once
// The windows of other programs, as far as the AOL link looks at them: found by class and caption,
// and read. Nothing is ever changed.

#include <cstdint>
#include <optional>
#include <string>

namespace brindle {

class WindowTree {
 public:
  using Window = std::uintptr_t;  // 0 is no window

  virtual ~WindowTree() = default;
  // The first top-level window of the class.
  virtual Window FindTopLevel(const std::string& className) = 0;
  // The next child of `parent` of that class after the child `after` (0: from the start), with
  // exactly that title when one is given.
  virtual Window FindChild(Window parent, Window after, const std::string& className,
                           const std::optional<std::string>& title) = 0;
  // The caption, in Windows-1252; empty when the window has none or is gone.
  virtual std::string Caption(Window window) = 0;
};

}  // namespace brindle
