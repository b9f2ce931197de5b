#pragma once
// What loading shows around the mail list of the main window. The rows and their header are watched
// through the list's observer.

#include <string>

namespace brindle {

class ListView {
 public:
  virtual ~ListView() = default;
  // The buttons `cmdSelect`, `cmdRequest`, `cmdFind` and `cmdLoadList`.
  virtual void EnableListButtons(bool enabled) = 0;
  // Shows the list, or in its place "Loading Please Wait...".
  virtual void ShowList(bool shown) = 0;
  // The text of `txtListServer`, the handle that requests go to.
  virtual void SetListServer(const std::string& handle) = 0;
};

}  // namespace brindle
