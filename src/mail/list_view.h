#pragma once
// What loading shows around the mail list of the main window. The rows and their header are watched
// through the list's observer.

#include <string>

namespace brindle {

// What there is to say about the list that is shown.
struct ListNote {
  std::string text;      // what went wrong; empty when nothing did
  bool canUndo = false;  // the list before can be brought back
};

class ListView {
 public:
  virtual ~ListView() = default;
  // The buttons `cmdSelect`, `cmdRequest`, `cmdFind` and `cmdLoadList`.
  virtual void EnableListButtons(bool enabled) = 0;
  // Shows the list, or in its place "Loading Please Wait...".
  virtual void ShowList(bool shown) = 0;
  // The text of `txtListServer`, the handle that requests go to.
  virtual void SetListServer(const std::string& handle) = 0;
  virtual std::string ListServer() const = 0;
  // Stands until the next note.
  virtual void ShowNote(const ListNote& note) = 0;
};

}  // namespace brindle
