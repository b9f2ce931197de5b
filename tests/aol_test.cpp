// The screen name in the AOL client's windows, on window trees built in memory.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stop_token>
#include <vector>

#include "aol/screen_name.h"

namespace brindle {
namespace {

constexpr const char* kParts[] = {"_AOL_Static", "_AOL_Glyph", "RICHCNTLSTATIC", "_AOL_Icon"};

struct Child {
  std::string caption;
  int parts[4] = {1, 2, 2, 26};
};

// A frame with its document area and documents. A document's number is a multiple of kChild, and
// its parts are counted from there, those of each class alike.
struct Desktop : WindowTree, EventPump {
  static constexpr Window kFrame = 1, kArea = 2, kChild = 100;

  Window FindTopLevel(const std::string& className) override {
    return className == frame ? kFrame : 0;
  }
  Window FindChild(Window parent, Window after, const std::string& className,
                   const std::optional<std::string>& title) override {
    EXPECT_NE(parent, 0U) << "would search the windows of everybody";
    if (parent == kFrame) return className == area ? kArea : 0;
    if (parent == kArea) {
      EXPECT_EQ(className, "AOL Child");
      for (size_t i = after / kChild; i < children.size(); ++i) {
        if (!title || children[i].caption == *title) return (i + 1) * kChild;
      }
      return 0;
    }
    const auto part = std::find(std::begin(kParts), std::end(kParts), className) - kParts;
    const Window next = (after == 0 ? parent : after) + 1;
    const auto count = static_cast<Window>(children.at(parent / kChild - 1).parts[part]);
    return next <= parent + count ? next : 0;
  }
  std::string Caption(Window window) override { return children.at(window / kChild - 1).caption; }
  void LetEventsRun(int) override {
    ++pumped;
    if (duringEvents) duringEvents();
  }

  std::vector<Child> children;
  std::string frame = "AOL Frame25", area = "MDIClient";
  int pumped = 0;
  std::function<void()> duringEvents;
};

TEST(AolTest, CaptionsGiveTheName) {
  const std::pair<const char*, const char*> cases[] = {
      {"Welcome, John Doe!", "John Doe"},
      {"aol AND dell Welcome, JaneD!", " JaneD"},
      {"Welcome, Ren\xE9!", "Ren\xC3\xA9"},  // captions come in the Windows code page
      {"Welcome, ", ""},                     // too short for what is cut off
      {"AOL and Dell Welcome,", ""},
      {"welcome, JohnDoe!", ""},
  };
  for (const auto& [caption, name] : cases) {
    Desktop desktop;
    desktop.children = {{caption}};
    EXPECT_EQ(AolClient(desktop, desktop).GetAolScreenName(), name) << caption;
  }
}

TEST(AolTest, OnlyTheSignedOnWelcomeWindowCounts) {
  Desktop desktop;
  AolClient link(desktop, desktop);
  EXPECT_EQ(link.FindAolWelcomeWindow(), 0U);
  desktop.children = {{"Welcome, A!", {0, 2, 2, 26}},
                      {"Welcome, A!", {1, 1, 2, 26}},
                      {"Welcome, A!", {1, 2, 1, 26}},
                      {"Welcome, A!", {1, 2, 2, 25}},
                      {"Buddy List"},
                      {"Welcome, B!", {9, 9, 9, 99}},
                      {"Welcome, C!"}};
  EXPECT_EQ(link.GetAolScreenName(), "B");
  EXPECT_EQ(link.FindAolChild("Welcome, C!"), 7 * Desktop::kChild);
  EXPECT_EQ(link.FindAolChild("Welcome"), 0U);
  desktop.area = "another";
  EXPECT_EQ(link.GetAolScreenName(), "");
  desktop.frame = "another";
  EXPECT_EQ(link.FindAolMdiClient(), 0U);
}

TEST(AolTest, WhileEventsRunTheProgramMayEnd) {
  Desktop desktop;
  desktop.children = {{"Mail"}, {"Mail"}, {"Welcome, A!"}};
  std::stop_source ending;
  AolClient link(desktop, desktop, ending.get_token());
  EXPECT_EQ(link.GetAolScreenName(), "A");
  EXPECT_EQ(desktop.pumped, 2);
  desktop.duringEvents = [&] { ending.request_stop(); };
  EXPECT_EQ(link.GetAolScreenName(), "");
  EXPECT_EQ(desktop.pumped, 3);
}

TEST(AolTest, TheFieldShowsTheSignedOnUsersNameElseTheStoredOne) {
  EXPECT_EQ(ShownScreenName(" Jane D", "stored"), "janed");
  EXPECT_EQ(ShownScreenName("  ", " My Name"), "myname");
}

}  // namespace
}  // namespace brindle
