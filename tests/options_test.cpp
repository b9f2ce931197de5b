#include "settings/options.h"

#include <gtest/gtest.h>

#include <string>

#include "settings/data_folder.h"
#include "support/memory_files.h"

namespace brindle {
namespace {

class OptionsTest : public testing::Test {
 protected:
  Options Loaded() { return ReadOptions(SettingsText(files.files["f"])); }
  void Save(const Options& options) {
    std::vector<Setting> all;
    AppendOptions(options, all);
    settings.WriteSettings(all);
  }

  MemoryFiles files;
  SettingsFile settings{files, "f"};
};

TEST_F(OptionsTest, AreStoredUnderTheirCaptionsInOrder) {
  Save(Loaded());
  EXPECT_EQ(files.files["f"],
            "[misc options]\r\n"
            "Send notices to status window=0\r\n"
            "Send mesagess to status window=0\r\n"
            "Scan chat for servers=1\r\n"
            "Request accesscode if found=0\r\n"
            "Make window stay on top=0\r\n"
            "[sound options]\r\n"
            "Play when someone joins channel=1\r\n"
            "sound0= \r\n"
            "Play when someone parts channel=1\r\n"
            "sound1= \r\n"
            "Play when notice is recieved=1\r\n"
            "sound2= c:\\windows\\media\\notify.wav\r\n"
            "Play when msg is received=1\r\n"
            "sound3= c:\\windows\\media\\ding.wav\r\n"
            "Play when server is added=1\r\n"
            "sound4= c:\\windows\\media\\ding.wav\r\n"
            "Play on irc server connection=1\r\n"
            "sound5= c:\\windows\\media\\chimes.wav\r\n"
            "Play on irc server disconnection=1\r\n"
            "sound6= c:\\windows\\media\\tada.wav\r\n"
            "[list options]\r\n"
            "View channel on list tab=0\r\n"
            "Deselect selected after requested=1\r\n"
            "[room options]\r\n"
            "Include timestamp on chat lines=1\r\n"
            "Try to enter room upon adding it=1\r\n"
            "[find options]\r\n"
            "Clear finds list on program exit=0\r\n"
            "Remove inactive finds after=0\r\n"
            "days=1\r\n"
            "[chat options]\r\n"
            "Keep digits that stand apart from a colour mark=0\r\n"
            "[theme options]\r\n"
            "Keep chat colours readable=1\r\n"
            "theme=0\r\n");
}

TEST_F(OptionsTest, EveryBoxComesBackInTheOtherState) {
  Options turned;
  for (const OptionGroup* group : {&kMiscOptions, &kListOptions, &kRoomOptions, &kFindOptions,
                                   &kChatOptions, &kThemeOptions}) {
    for (const OptionBox& box : group->boxes) turned.*box.state = !(turned.*box.state);
  }
  for (SoundOption& sound : turned.sounds) sound.on = false;
  turned.sounds[0].path = "/a b/c.wav";
  turned.sounds[6].path = "";
  turned.findDaysIndex = 29;
  turned.theme = ThemeChoice::kDark;
  Save(turned);
  const Options loaded = Loaded();
  for (const OptionGroup* group : {&kMiscOptions, &kListOptions, &kRoomOptions, &kFindOptions,
                                   &kChatOptions, &kThemeOptions}) {
    for (const OptionBox& box : group->boxes) {
      EXPECT_EQ(loaded.*box.state, turned.*box.state) << box.caption;
    }
  }
  for (size_t slot = 0; slot < kSoundSlots; ++slot) {
    EXPECT_FALSE(loaded.sounds[slot].on) << slot;
    EXPECT_EQ(loaded.sounds[slot].path, turned.sounds[slot].path) << slot;
  }
  EXPECT_EQ(loaded.FindDays(), 30);
  EXPECT_EQ(loaded.theme, ThemeChoice::kDark);
}

TEST_F(OptionsTest, OddValuesAreReadLeniently) {
  files.files["f"] =
      "[misc options]\nScan chat for servers=no\nMake window stay on top=-1\n"
      "[find options]\nREMOVE INACTIVE FINDS AFTER=1x\ndays=30\n"
      "[sound options]\nsound2=\nsound6=  \n"
      "[theme options]\ntheme=3\n"
      "[list]\nforecolor=255\nbackcolor=white\n[room]\nforecolor=16777216\nbackcolor= 65280.5\n";
  const Options options = Loaded();
  EXPECT_FALSE(options.scanChatForServers);
  EXPECT_TRUE(options.stayOnTop);
  EXPECT_TRUE(options.removeInactiveFinds);
  EXPECT_EQ(options.FindDays(), 2);
  EXPECT_EQ(options.theme, ThemeChoice::kSystem);
  EXPECT_EQ(options.sounds[2].path, "c:\\windows\\media\\notify.wav");
  EXPECT_EQ(options.sounds[6].path, "");
  EXPECT_EQ(options.listForecolor, kPureRed);
  EXPECT_EQ(options.listBackcolor, kBlack);
  EXPECT_EQ(options.roomForecolor, kBlack);
  EXPECT_EQ(options.roomBackcolor, (Colour{0, 255, 0}));
}

TEST_F(OptionsTest, APickedColourIsStoredAtOnce) {
  Options options;
  PickColour(ColourSlot::kRoomForecolor, {1, 2, 3}, options, settings);
  PickColour(ColourSlot::kListBackcolor, {0, 0, 255}, options, settings);
  EXPECT_EQ(files.files["f"], "[room]\r\nforecolor=197121\r\n[list]\r\nbackcolor=16711680\r\n");
  EXPECT_EQ(options.roomForecolor, (Colour{1, 2, 3}));
  EXPECT_EQ(Loaded().listBackcolor, (Colour{0, 0, 255}));
}

TEST(DataFolder, IsBesideTheProgramOnlyWhereThatWorks) {
  EXPECT_EQ(DataFolder({"", "/p", true, false, "/u"}), "/p");
  EXPECT_EQ(DataFolder({"", "/p", false, true, "/u"}), "/p");
  EXPECT_EQ(DataFolder({"", "/p", false, false, "/u"}), "/u");
  EXPECT_EQ(DataFolder({"/d", "/p", true, true, "/u"}), "/d");
  EXPECT_EQ(PathsIn("/d").settings, PathsIn("/d/").settings);
  EXPECT_EQ(PathsIn("/d/").finds, "/d/finds.txt");
}

}  // namespace
}  // namespace brindle
