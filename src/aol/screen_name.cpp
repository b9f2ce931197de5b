#include "aol/screen_name.h"

#include "base/encoding.h"
#include "base/text.h"

namespace brindle {
namespace {

constexpr char kChildClass[] = "AOL Child";
constexpr char kDellCaption[] = "aol and dell welcome";

// What stands before the name: "Welcome, " or "AOL and Dell Welcome,".
constexpr size_t kWelcomeLength = 9;
constexpr size_t kDellWelcomeLength = 21;

// A signed-on welcome window holds at least this many of each; other windows may say Welcome too.
constexpr int kIcons = 26;
constexpr int kGlyphs = 2;
constexpr int kRichTexts = 2;
constexpr int kStatics = 1;

}  // namespace

WindowTree::Window AolClient::FindAolFrame() { return windows_.FindTopLevel("AOL Frame25"); }

WindowTree::Window AolClient::FindAolMdiClient() {
  // Without a frame the search would go through the windows of everybody.
  const WindowTree::Window frame = FindAolFrame();
  return frame == 0 ? 0 : windows_.FindChild(frame, 0, "MDIClient", std::nullopt);
}

WindowTree::Window AolClient::FindAolChild(const std::string& caption) {
  const WindowTree::Window mdi = FindAolMdiClient();
  if (mdi == 0) return 0;
  return windows_.FindChild(mdi, 0, kChildClass,
                            caption.empty() ? std::nullopt : std::optional(caption));
}

WindowTree::Window AolClient::FindAolWelcomeWindow() {
  const WindowTree::Window mdi = FindAolMdiClient();
  WindowTree::Window child = FindAolChild("");
  while (child != 0 && !IsWelcomeWindow(child)) {
    events_.LetEventsRun(0);
    if (stop_.stop_requested()) return 0;
    child = windows_.FindChild(mdi, child, kChildClass, std::nullopt);
  }
  return child;
}

std::string AolClient::GetAolScreenName() {
  const WindowTree::Window welcome = FindAolWelcomeWindow();
  if (welcome == 0) return "";
  const std::string caption = GetWindowCaption(welcome);
  const bool dell = LowerCase(caption).find(kDellCaption) != std::string::npos;
  const size_t before = dell ? kDellWelcomeLength : kWelcomeLength;
  if (caption.size() <= before) return "";
  // The last character is the "!".
  return Utf8FromWindows1252(caption.substr(before, caption.size() - before - 1));
}

WindowTree::Window AolClient::NthChild(WindowTree::Window parent, const char* className,
                                       int count) {
  WindowTree::Window child = 0;
  for (int i = 0; i < count; ++i) {
    child = windows_.FindChild(parent, child, className, std::nullopt);
    if (child == 0) return 0;
  }
  return child;
}

bool AolClient::IsWelcomeWindow(WindowTree::Window child) {
  return NthChild(child, "_AOL_Static", kStatics) != 0 &&
         NthChild(child, "_AOL_Glyph", kGlyphs) != 0 &&
         NthChild(child, "RICHCNTLSTATIC", kRichTexts) != 0 &&
         NthChild(child, "_AOL_Icon", kIcons) != 0 &&
         GetWindowCaption(child).find("Welcome") != std::string::npos;
}

std::string ShownScreenName(std::string_view signedOn, std::string_view stored) {
  return MatchKey(IsBlank(signedOn) ? stored : signedOn);
}

}  // namespace brindle
