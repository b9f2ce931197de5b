// The screen name in the AOL client's windows, on window trees built in memory.

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <stop_token>
#include <vector>

#include "aol/screen_name.h"

namespace brindle {
namespace {

// Windows by their numbers, from 1: a frame, its document area, and what is in that.
struct Desktop : WindowTree, EventPump {
  struct Item {
    Window parent;
    std::string className, caption;
  };
  // A document with so many parts of each kind; by its number.
  Window Add(const std::string& caption, std::array<int, 4> parts = {1, 2, 2, 26}) {
    constexpr const char* kParts[] = {"_AOL_Static", "_AOL_Glyph", "RICHCNTLSTATIC", "_AOL_Icon"};
    items.push_back({2, "AOL Child", caption});
    const Window document = items.size();
    for (size_t kind = 0; kind < parts.size(); ++kind) {
      items.insert(items.end(), static_cast<size_t>(parts[kind]), {document, kParts[kind], ""});
    }
    return document;
  }

  Window FindTopLevel(const std::string& className) override {
    return className == items[0].className ? 1 : 0;
  }
  Window FindChild(Window parent, Window after, const std::string& className,
                   const std::optional<std::string>& title) override {
    EXPECT_NE(parent, 0U) << "would search the windows of everybody";
    for (Window window = after + 1; window <= items.size(); ++window) {
      const Item& item = items[window - 1];
      const bool isIt = item.parent == parent && item.className == className;
      if (isIt && item.caption == title.value_or(item.caption)) return window;
    }
    return 0;
  }
  std::string Caption(Window window) override { return items.at(window - 1).caption; }
  void LetEventsRun(int) override {
    ++pumped;
    if (duringEvents) duringEvents();
  }

  std::vector<Item> items = {{0, "AOL Frame25", ""}, {1, "MDIClient", ""}};
  int pumped = 0;
  std::function<void()> duringEvents;
};

TEST(AolTest, CaptionsGiveTheName) {
  const std::pair<const char*, const char*> cases[] = {
      {"Welcome, John Doe!", "John Doe"},
      {"aol AND dell Welcome, JaneD!", " JaneD"},
      {"Welcome, Ren\xE9!", "Ren\xC3\xA9"},  // captions come in the Windows code page
      {"Welcome", ""},                       // too short for what is cut off
  };
  for (const auto& [caption, name] : cases) {
    Desktop desktop;
    desktop.Add(caption);
    EXPECT_EQ(AolClient(desktop, desktop).GetAolScreenName(), name) << caption;
  }
}

TEST(AolTest, OnlyTheSignedOnWelcomeWindowCounts) {
  Desktop desktop;
  AolClient link(desktop, desktop);
  EXPECT_EQ(link.FindAolWelcomeWindow(), 0U);
  for (const auto parts : {std::array{0, 2, 2, 26}, {1, 1, 2, 26}, {1, 2, 1, 26}, {1, 2, 2, 25}}) {
    desktop.Add("Welcome, A!", parts);
  }
  desktop.Add("Buddy List");
  desktop.Add("Welcome, B!", {9, 9, 9, 99});
  const WindowTree::Window last = desktop.Add("Welcome, C!");
  EXPECT_EQ(link.FindAolChild("Welcome, C!"), last);
  EXPECT_EQ(link.GetAolScreenName(), "B");
  EXPECT_EQ(link.FindAolChild("Welcome"), 0U);
  desktop.items[1].className = "another";
  EXPECT_EQ(link.GetAolScreenName(), "");
  desktop.items[0].className = "another";
  EXPECT_EQ(link.FindAolMdiClient(), 0U);
}

TEST(AolTest, WhileEventsRunTheProgramMayEnd) {
  Desktop desktop;
  for (const char* caption : {"Mail", "Mail", "Welcome, A!"}) desktop.Add(caption);
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
