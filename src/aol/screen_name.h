#pragma once
// The AOL link: when the AOL client runs and is signed on, the caption of its welcome window holds
// the user's screen name.

#include <stop_token>
#include <string>
#include <string_view>
#include <utility>

#include "aol/window_tree.h"
#include "base/clock.h"

namespace brindle {

class AolClient {
 public:
  // `stop` ends the walk through the windows without a name.
  AolClient(WindowTree& windows, EventPump& events, std::stop_token stop = {})
      : windows_(windows), events_(events), stop_(std::move(stop)) {}

  // The client's frame, its document area, and a document window: the first one, or with a caption
  // the first one of exactly that caption. 0 when not found.
  WindowTree::Window FindAolFrame();
  WindowTree::Window FindAolMdiClient();
  WindowTree::Window FindAolChild(const std::string& caption);

  std::string GetWindowCaption(WindowTree::Window window) { return windows_.Caption(window); }

  // The signed-on welcome window, known by what lies in it; window events run between two windows.
  WindowTree::Window FindAolWelcomeWindow();

  // The screen name as the caption spells it; empty when there is none.
  std::string GetAolScreenName();

 private:
  // The `count`-th child of that class; 0 when there are fewer.
  WindowTree::Window NthChild(WindowTree::Window parent, const char* className, int count);
  bool IsWelcomeWindow(WindowTree::Window child);

  WindowTree& windows_;
  EventPump& events_;
  std::stop_token stop_;
};

// What the fields show of it: the name of the signed-on user, else the stored one, without blanks
// and in lower case.
std::string ShownScreenName(std::string_view signedOn, std::string_view stored);

}  // namespace brindle
