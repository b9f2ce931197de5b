// The screen name in the AOL client's windows, on window trees built in memory.

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "aol/screen_name.h"

namespace brindle {
namespace {

class MemoryWindows : public WindowTree, public EventPump {
 public:
  // A window under `parent`; 0 for a top-level one.
  Window Add(Window parent, const std::string& className, const std::string& caption = "") {
    nodes_.push_back({parent, className, caption});
    return nodes_.size();
  }

  void Add(Window parent, const std::string& className, int count) {
    for (int i = 0; i < count; ++i) Add(parent, className);
  }

  Window FindTopLevel(const std::string& className) override {
    return Find(0, 0, className, std::nullopt);
  }

  Window FindChild(Window parent, Window after, const std::string& className,
                   const std::optional<std::string>& title) override {
    EXPECT_NE(parent, 0U) << "would search the windows of everybody";
    return Find(parent, after, className, title);
  }

  std::string Caption(Window window) override { return nodes_.at(window - 1).caption; }

  void LetEventsRun(int) override {
    ++pumped;
    if (duringEvents) duringEvents();
  }

  // The client closes the window while the walk is under way.
  void Remove(Window window) { nodes_.at(window - 1).className.clear(); }

  int pumped = 0;
  std::function<void()> duringEvents;

 private:
  struct Node {
    Window parent;
    std::string className;
    std::string caption;
  };

  Window Find(Window parent, Window after, const std::string& className,
              const std::optional<std::string>& title) const {
    if (after != 0 && nodes_.at(after - 1).className.empty()) return 0;
    for (Window window = after + 1; window <= nodes_.size(); ++window) {
      const Node& node = nodes_[window - 1];
      if (node.parent == parent && node.className == className &&
          (!title || node.caption == *title))
        return window;
    }
    return 0;
  }

  std::vector<Node> nodes_;
};

struct Counts {
  int statics = 1;
  int glyphs = 2;
  int richTexts = 2;
  int icons = 26;
};

class AolTest : public testing::Test {
 protected:
  void Client() {
    windows.Add(0, "Notepad", "Welcome, Nobody!");
    frame = windows.Add(0, "AOL Frame25", "America Online");
    windows.Add(frame, "AOL Toolbar");
    mdi = windows.Add(frame, "MDIClient");
  }

  WindowTree::Window Child(const std::string& caption, const Counts& counts = {}) {
    const auto child = windows.Add(mdi, "AOL Child", caption);
    windows.Add(child, "_AOL_Glyph", counts.glyphs);
    windows.Add(child, "RICHCNTLSTATIC", counts.richTexts);
    windows.Add(child, "_AOL_Icon", counts.icons);
    windows.Add(child, "_AOL_Static", counts.statics);
    return child;
  }

  MemoryWindows windows;
  AolClient link{windows, windows};
  WindowTree::Window frame = 0;
  WindowTree::Window mdi = 0;
};

TEST_F(AolTest, CaptionsGiveTheName) {
  const struct {
    const char* caption;
    const char* name;
  } cases[] = {
      {"Welcome, John Doe!", "John Doe"},
      {"AOL and Dell Welcome, JaneD!", " JaneD"},
      {"aol AND dell Welcome, JaneD!", " JaneD"},
      {"Welcome, Ren\xE9!", "Ren\xC3\xA9"},  // captions come in the Windows code page
      {"Welcome, !", ""},
      // Too short for what is cut off.
      {"Welcome, ", ""},
      {"Welcome", ""},
      {"AOL and Dell Welcome,", ""},
      // Not the welcome window.
      {"welcome, JohnDoe!", ""},
      {"", ""},
  };
  for (const auto& c : cases) {
    MemoryWindows fresh;
    windows = fresh;
    Client();
    Child(c.caption);
    EXPECT_EQ(link.GetAolScreenName(), c.name) << c.caption;
  }
}

TEST_F(AolTest, DecoysWithFewerPartsArePassedBy) {
  Client();
  Child("Welcome, NoStatic!", {0, 2, 2, 26});
  Child("Welcome, OneGlyph!", {1, 1, 2, 26});
  Child("Welcome, OneRich!", {1, 2, 1, 26});
  Child("Welcome, TooFewIcons!", {1, 2, 2, 25});
  EXPECT_EQ(link.FindAolWelcomeWindow(), 0U);
  EXPECT_EQ(link.GetAolScreenName(), "");
  Child("Buddy List", {1, 2, 2, 40});
  const auto welcome = Child("Welcome, John Doe!", {3, 4, 5, 60});
  Child("Welcome, Second!");
  EXPECT_EQ(link.FindAolWelcomeWindow(), welcome);
  EXPECT_EQ(link.GetAolScreenName(), "John Doe");
}

TEST_F(AolTest, EventsRunBetweenTwoWindowsAndMayTakeThemAway) {
  Client();
  const auto first = Child("Mail");
  Child("Welcome, John Doe!");
  EXPECT_EQ(link.GetAolScreenName(), "John Doe");
  EXPECT_EQ(windows.pumped, 1);
  windows.duringEvents = [&] { windows.Remove(first); };
  EXPECT_EQ(link.GetAolScreenName(), "");
}

TEST_F(AolTest, NothingIsFoundWithoutTheClient) {
  EXPECT_EQ(link.GetAolScreenName(), "");
  // Windows that look like documents of a client without a frame or without a document area.
  Child("Welcome, JohnDoe!");
  EXPECT_EQ(link.FindAolChild("Welcome, JohnDoe!"), 0U);
  frame = windows.Add(0, "AOL Frame25");
  EXPECT_EQ(link.FindAolFrame(), frame);
  EXPECT_EQ(link.FindAolMdiClient(), 0U);
  EXPECT_EQ(link.GetAolScreenName(), "");
}

TEST(ScreenName, IsTheSignedOnUsersElseTheStoredOne) {
  EXPECT_EQ(ShownScreenName(" Jane D", "stored"), "janed");
  EXPECT_EQ(ShownScreenName("  ", " My Name"), "myname");
}

TEST_F(AolTest, ADocumentIsFoundByItsWholeCaption) {
  Client();
  const auto first = Child("Mail", {0, 0, 0, 0});
  const auto second = Child("Mail 2", {0, 0, 0, 0});
  EXPECT_EQ(link.FindAolChild(""), first);
  EXPECT_EQ(link.FindAolChild("Mail 2"), second);
  EXPECT_EQ(link.FindAolChild("Mai"), 0U);
  EXPECT_EQ(link.GetWindowCaption(second), "Mail 2");
}

}  // namespace
}  // namespace brindle
