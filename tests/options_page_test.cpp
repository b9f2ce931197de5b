#include "settings/options_page.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/fake_clock.h"
#include "support/fake_dialogs.h"
#include "support/fake_views.h"
#include "support/memory_files.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

class OptionsPageTest : public testing::Test, protected OptionsPageView {
 protected:
  void EnableRequestAccessCode(bool enabled) override { Note("code", enabled); }
  void EnableFindDays(bool enabled) override { Note("days", enabled); }
  void SetTopmost(bool topmost) override { Note("top", topmost); }
  void ShowRoomOnListTab(bool shown) override { Note("room", shown); }
  void SetSoundPath(SoundSlot slot, const std::string& path) override {
    log.push_back(std::to_string(static_cast<int>(slot)) + " " + path);
  }
  void ShowTheme() override { log.push_back("theme"); }
  void ShowColour(ColourSlot slot, Colour colour) override {
    log.push_back(std::to_string(static_cast<int>(slot)) + " " + ColourText(colour));
  }
  void Note(const char* what, bool on) { log.push_back(std::string(what) + (on ? " on" : " off")); }
  Texts TakeLog() { return std::exchange(log, {}); }

  Texts log;
  Options options;
  FakeDialogs dialogs;
  MemoryFiles files;
  FakeSounds sounds;
  SettingsFile settings{files, "ini"};
  const std::string findsPath = "finds";
  FakeClock clock;
  Finds finds{files, findsPath, options, clock};
  OptionsPage page{options, settings, *this, files, finds, sounds, dialogs};
};

TEST_F(OptionsPageTest, SomeBoxesActAtOnce) {
  const struct {
    const OptionGroup& group;
    size_t index;
    bool Options::*state;
    Texts effects;  // of ticking and of clearing
  } table[] = {
      {kMiscOptions, 0, &Options::noticesToStatus, {}},
      {kMiscOptions, 1, &Options::messagesToStatus, {}},
      {kMiscOptions, 2, &Options::scanChatForServers, {"code on", "code off"}},
      {kMiscOptions, 3, &Options::requestAccessCode, {}},
      {kMiscOptions, 4, &Options::stayOnTop, {"top on", "top off"}},
      {kChatOptions, 0, &Options::keepDigitsApart, {}},
      {kThemeOptions, 0, &Options::readableChatColours, {"theme", "theme"}},
      {kFindOptions, 0, &Options::clearFindsOnExit, {}},
      {kFindOptions, 1, &Options::removeInactiveFinds, {"days on", "days off"}},
      {kListOptions, 0, &Options::channelOnListTab, {"room on", "room off"}},
      {kListOptions, 1, &Options::deselectAfterRequested, {}},
      {kRoomOptions, 0, &Options::timestampChatLines, {}},
      {kRoomOptions, 1, &Options::enterRoomUponAdding, {}},
  };
  for (const auto& row : table) {
    const char* caption = row.group.boxes[row.index].caption;
    options.requestAccessCode = true;
    for (const bool on : {true, false}) {
      page.BoxClicked(row.group, row.index, on);
      EXPECT_EQ(options.*row.state, on) << caption;
      EXPECT_TRUE(options.requestAccessCode || row.state == &Options::requestAccessCode);
    }
    EXPECT_EQ(TakeLog(), row.effects) << caption;
  }
  EXPECT_EQ(files.changes, Texts{});
}

TEST_F(OptionsPageTest, ClearsTheFindsWhenSure) {
  files.files["finds"] = "x";
  dialogs.questionAnswers = {false, true};
  page.cmdOptionsFinds_Click();
  EXPECT_EQ(files.changes, Texts{});
  page.cmdOptionsFinds_Click();
  EXPECT_EQ(files.changes, Texts{"remove finds"});
  EXPECT_EQ(
      dialogs.questions[0],
      (FakeDialogs::Shown{Icon::kExclamation, "Are you sure you wish to delete your finds list?"}));
  EXPECT_EQ(dialogs.notices.size(), 0U);
}

TEST_F(OptionsPageTest, ChoosesAndTriesSounds) {
  files.files = {{"/A/Ding.WAV", ""}, {"/a/low.wav", ""}, {"/A/LOW.wav", ""}};
  dialogs.fileAnswers = {std::nullopt, "", "/gone.wav", "/A/Ding.WAV", "/A/LOW.wav"};
  for (int i = 0; i < 5; ++i) page.cmdSoundOpen_Click(SoundSlot::kMessage);
  // In lower case where that is a file; elsewhere a name in lower case names nothing.
  EXPECT_EQ(TakeLog(), (Texts{"3 /A/Ding.WAV", "3 /a/low.wav"}));
  EXPECT_EQ(dialogs.filters[0], "Wav Files | *.wav");
  EXPECT_EQ(options.sounds[3].path, "/a/low.wav");
  page.chkOptionsSound_Click(SoundSlot::kMessage, false);
  for (const char* path : {"/a/low.wav", "/gone.wav", "", "/A/Ding.WAV"}) {
    page.txtOptionsSound_Change(SoundSlot::kMessage, path);
    page.cmdSoundPlay_Click(SoundSlot::kMessage);
  }
  EXPECT_EQ(sounds.played, (Texts{"/a/low.wav", "/A/Ding.WAV"}));
  EXPECT_EQ(dialogs.notices.size(), 0U);
}

TEST_F(OptionsPageTest, AColourIsStoredAtOnceUnlessCancelled) {
  page.ColourClicked(ColourSlot::kRoomBackcolor);
  EXPECT_EQ(TakeLog(), Texts{});
  EXPECT_EQ(files.changes, Texts{});
  EXPECT_EQ(options.roomBackcolor, kWhite);
  dialogs.colourAnswers = {Colour{1, 2, 3}, Colour{255, 0, 0}, Colour{0, 0, 0}, Colour{0, 0, 1}};
  for (ColourSlot slot : {ColourSlot::kListForecolor, ColourSlot::kListBackcolor,
                          ColourSlot::kRoomForecolor, ColourSlot::kRoomBackcolor}) {
    page.ColourClicked(slot);
  }
  EXPECT_EQ(TakeLog(), (Texts{"0 197121", "1 255", "2 0", "3 65536"}));
  EXPECT_EQ(files.files["ini"],
            "[list]\r\nforecolor=197121\r\nbackcolor=255\r\n[room]\r\nforecolor=0\r\n"
            "backcolor=65536\r\n");
  EXPECT_EQ(options.roomBackcolor, (Colour{0, 0, 1}));
}

}  // namespace
}  // namespace brindle
