// The options: as they are stored and told of, and the page that changes them.
#include "settings/options.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>

#include "settings/options_page.h"
#include "support/memory.h"
#include "support/stage.h"

namespace brindle {
namespace {

struct OptionsStage : Stage, OptionsPageView {
  void EnableRequestAccessCode(bool enabled) override { Note(enabled ? "code" : "no code"); }
  void EnableFindDays(bool enabled) override { Note(enabled ? "days" : "no days"); }
  void SetTopmost(bool topmost) override { Note(topmost ? "top" : "no top"); }
  void ShowRoomOnListTab(bool shown) override { Note(shown ? "room" : "no room"); }
  void SetSoundPath(SoundSlot slot, const std::string& path) override {
    Note(std::to_string(static_cast<int>(slot)) + " " + path);
  }
  void ShowConnection(const ConnectionOptions& choices) override { Note(choices.certificatePath); }
  void ShowOptionsHint(const std::string& text) override { ShowHint(text); }
  void ShowTheme() override { Note("theme"); }
  void KeepChatLines(int lines) override { Note("lines " + std::to_string(lines)); }
  void ShowColour(ColourSlot slot, Colour shown) override {
    Note(std::to_string(static_cast<int>(slot)) + " " + ColourText(shown));
  }
  std::optional<Colour> PickColour(Colour) override { return std::exchange(picked, {}); }

  Options options;
  MemoryFiles files;
  SettingsFile settings{files, "ini"};
  const std::string findsPath = "finds";
  Finds finds{files, findsPath, options, *this};
  OptionsPage page{options, settings, *this, files, finds, *this, *this};
  std::optional<Colour> picked;  // once
};

Options Read(const std::string& text) { return ReadOptions(SettingsText(text)); }

// What they are called and are at first stands in docs/files-and-settings.md, as checked below.
TEST(Options, AreReadBackAsTheyWereStored) {
  const std::string text = OptionsText(Options());
  EXPECT_TRUE(text.find("\r\nsound1= \r\n") <
              text.find("\r\nsound6= c:\\windows\\media\\tada.wav"));
  EXPECT_EQ(OptionsText(Read("")), text);
  // Each value on its own in another state, each path cleared and another.
  for (size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", end + 1)) {
    std::string other = text;
    if (text[end - 1] == '0') other[end - 1] = '1';
    if (text[end - 1] == '1') other[end - 1] = '0';
    if (text[end - 1] == ' ') other.insert(end, "/a b/c.wav");
    if (text[end - 1] == 'v') other.erase(text.rfind(' ', end) + 1, end - text.rfind(' ', end) - 1);
    EXPECT_EQ(OptionsText(Read(other)), other);
  }
}

TEST(Options, AreReadLeniently) {
  const Options options = Read(
      "[misc options]\nScan chat for servers=no\nMake window stay on top=-1\n"
      "[find options]\nREMOVE INACTIVE FINDS AFTER=1x\ndays=30\n"
      "[sound options]\nsound2=\nsound6=  \n[theme options]\ntheme=3\n"
      "[connection options]\nproxy=4\nproxy user=me\naccount proof=-1\naccount=me\n");
  EXPECT_FALSE(options.scanChatForServers);
  EXPECT_TRUE(options.stayOnTop && options.removeInactiveFinds);
  EXPECT_EQ(options.FindDays(), 2);
  EXPECT_EQ(options.connection,
            (ConnectionOptions{AccountProof::kNone, "me", "", ProxyKind::kNone, "", "me"}));
  EXPECT_EQ(Read("[find options]\ndays=29").FindDays(), 30);
  EXPECT_EQ(options.theme, ThemeChoice::kSystem);
  EXPECT_EQ(Read("[chat options]\nlines=999").chatLines, 100'000);
  EXPECT_EQ(Read("[theme options]\ntheme=2").theme, ThemeChoice::kDark);
  EXPECT_EQ(options.sounds[2].path, "c:\\windows\\media\\notify.wav");
  EXPECT_EQ(options.sounds[6].path, "");
  const std::pair<const char*, Colour> colours[] = {
      {"255", kPureRed}, {"white", kBlack},    {" 65280.5", {0, 255, 0}},
      {"", kWhite},      {"16777217", kWhite}, {"16777214", {254, 255, 255}}};
  for (const auto& [stored, colour] : colours) {
    EXPECT_EQ(Read("[list]\nbackcolor=" + std::string(stored)).listBackcolor, colour) << stored;
  }
}

TEST(OptionsPage, SomeBoxesActAtOnce) {
  // What comes of ticking and of clearing those that are more than an option.
  const std::tuple<const OptionGroup&, size_t, bool Options::*, const char*> table[] = {
      {kMiscOptions, 2, &Options::scanChatForServers, "code\nno code"},
      {kMiscOptions, 4, &Options::stayOnTop, "top\nno top"},
      {kThemeOptions, 0, &Options::readableChatColours, "theme\ntheme"},
      {kFindOptions, 1, &Options::removeInactiveFinds, "days\nno days"},
      {kListOptions, 0, &Options::channelOnListTab, "room\nno room"},
      {kRoomOptions, 1, &Options::enterRoomUponAdding, ""},
  };
  OptionsStage stage;
  for (const auto& [group, index, state, effects] : table) {
    const char* caption = group.boxes[index].caption;
    for (const bool on : {true, false}) {
      Options expected = stage.options;
      expected.*state = on;
      stage.page.BoxClicked(group, index, on);
      EXPECT_EQ(OptionsText(stage.options), OptionsText(expected)) << caption;
    }
    EXPECT_EQ(stage.Taken(), effects) << caption;
  }
  EXPECT_TRUE(stage.files.changes.empty());
}

TEST(OptionsPage, ClearsTheFindsWhenSure) {
  OptionsStage stage;
  stage.answers = {std::nullopt, "yes"};
  for (const size_t removed : {0U, 1U}) {
    stage.page.cmdOptionsFinds_Click();
    EXPECT_EQ(stage.Taken(), "! Are you sure you wish to delete your finds list?");
    EXPECT_EQ(stage.files.changes.size(), removed);
  }
}

TEST(OptionsPage, ChoosesAndTriesSounds) {
  OptionsStage stage;
  stage.files.files = {{"/A/Ding.WAV", ""}, {"/a/low.wav", ""}, {"/A/LOW.wav", ""}};
  stage.answers = {std::nullopt, "", "/gone.wav", "/A/Ding.WAV", "/A/LOW.wav"};
  for (int i = 0; i < 5; ++i) stage.page.cmdSoundOpen_Click(SoundSlot::kMessage);
  // In lower case where that is a file; elsewhere a name in lower case names nothing.
  const std::string ask = "? Wav Files | *.wav\n";
  EXPECT_EQ(stage.Taken(), ask + ask + ask + ask + "3 /A/Ding.WAV\n" + ask + "3 /a/low.wav");
  EXPECT_EQ(stage.options.sounds[3].path, "/a/low.wav");
  stage.page.chkOptionsSound_Click(SoundSlot::kMessage, false);
  EXPECT_FALSE(stage.options.sounds[3].on);
  for (const char* path : {"/a/low.wav", "/gone.wav", "", "/A/Ding.WAV"}) {
    stage.page.txtOptionsSound_Change(SoundSlot::kMessage, path);
    stage.page.cmdSoundPlay_Click(SoundSlot::kMessage);
  }
  EXPECT_EQ(stage.Taken(),
            "play /a/low.wav\nhint There is no sound file /gone.wav\n"
            "hint No sound file is chosen.\nplay /A/Ding.WAV");
}

TEST(OptionsPage, AColourIsStoredAtOnceUnlessCancelled) {
  OptionsStage stage;
  for (int slot = 0; slot < 4; ++slot) {
    stage.page.ColourClicked(static_cast<ColourSlot>(slot));
    stage.picked = Colour{1, 2, static_cast<std::uint8_t>(slot)};
    stage.page.ColourClicked(static_cast<ColourSlot>(slot));
  }
  EXPECT_EQ(PickedColour(Options(), ColourSlot::kListForecolor), std::nullopt);
  EXPECT_EQ(stage.Taken(), "0 513\n1 66049\n2 131585\n3 197121");
  EXPECT_EQ(stage.files.files["ini"],
            "[list]\r\nforecolor=513\r\nbackcolor=66049\r\n"
            "[room]\r\nforecolor=131585\r\nbackcolor=197121\r\n");
  const Options read = Read(stage.files.files["ini"]);
  EXPECT_EQ(read.listBackcolor, stage.options.listBackcolor);
}

TEST(Options, AreDocumentedEachWithItsFirstValue) {
  std::vector<Setting> settings;
  AppendOptions(Options(), settings);
  for (const ColourOption& option : kColourOptions) {
    settings.push_back({option.section, option.key, ColourText(Options().*option.colour)});
  }
  std::set<std::string> sections;
  std::set<std::string> inOneOnly;
  for (const auto& [section, key, value, form] : settings) {
    sections.insert(section);
    inOneOnly.insert(section + ", " + key + ": " + std::string(TrimBlanks(value)));
  }
  const std::regex heading("### `\\[(.*)\\]`");
  const std::regex tableRow("\\| `(.*?)` \\|(?: `(.*?)`)? \\|.*");
  std::ifstream document(BRINDLE_SOURCE "/docs/files-and-settings.md");
  std::string section;
  std::smatch found;
  for (std::string line; std::getline(document, line);) {
    if (std::regex_match(line, found, heading)) section = found[1];
    if (sections.count(section) == 0 || !std::regex_match(line, found, tableRow)) continue;
    const std::string row = section + ", " + found[1].str() + ": " + found[2].str();
    if (inOneOnly.erase(row) == 0) inOneOnly.insert(row);
  }
  EXPECT_EQ(inOneOnly, std::set<std::string>()) << "Code or document lack these.";
}

}  // namespace
}  // namespace brindle
