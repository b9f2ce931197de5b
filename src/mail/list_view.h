#pragma once
// What loading and selecting show around the rows of a list. The rows themselves are watched
// through the list's observer.

#include <string>

namespace brindle {

// A list with a title header.
class TitledView {
 public:
  virtual ~TitledView() = default;
  // The text above the titles.
  virtual void SetTitleHeader(const std::string& text) = 0;
};

// The list on the main window.
class ListView : public TitledView {
 public:
  // The buttons `cmdSelect`, `cmdRequest`, `cmdFind` and `cmdLoadList`.
  virtual void EnableListButtons(bool enabled) = 0;
  // Shows the list, or in its place "Loading Please Wait...".
  virtual void ShowList(bool shown) = 0;
  // The text of `txtListServer`, the handle that requests go to.
  virtual void SetListServer(const std::string& handle) = 0;
};

}  // namespace brindle
