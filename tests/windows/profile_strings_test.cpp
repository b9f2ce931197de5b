// Our settings file beside the system's own functions for such files: hundreds of files, each read
// and changed by both.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <regex>
#include <set>
#include <sstream>

#include "settings/settings_text.h"

namespace brindle {
namespace {

constexpr int kFiles = 400;

struct ProfileStrings : testing::Test {
  ~ProfileStrings() override { DeleteFileA(path_.c_str()); }

  void SetContent(const std::string& content) const {
    std::ofstream(path_, std::ios::binary) << content;
  }
  std::string Content() const {
    std::ostringstream all;
    all << std::ifstream(path_, std::ios::binary).rdbuf();
    return all.str();
  }
  std::string Theirs(const std::string& section, const std::string& key) const {
    char value[1000] = "";
    GetPrivateProfileStringA(section.c_str(), key.c_str(), "", value, sizeof value, path_.c_str());
    return value;
  }
  // Whatever is asked for, we read out of the text what they read out of the file.
  void ExpectReadAlike(const std::string& text) const {
    for (const char* section : kSections) {
      for (const char* key : kKeys) {
        EXPECT_EQ(ReadSettingText(text, section, key), Theirs(section, key))
            << "[" << section << "] " << key << " of\n"
            << text;
      }
    }
  }
  template <size_t kSize>
  std::string Any(const char* const (&from)[kSize]) {
    return from[random_() % kSize];
  }
  std::string AnyFile() {
    std::string text;
    const auto lines = random_() % 12;
    for (size_t i = 0; i < lines; ++i) {
      const auto kind = random_() % 10;
      if (kind < 3) text += Any(kBlanks) + "[" + Any(kSections) + "]" + Any(kBlanks);
      if (kind == 3) text += Any(kNoise);
      if (kind > 3)
        text += Any(kBlanks) + Any(kKeys) + Any(kBlanks) + "=" + Any(kBlanks) + Any(kValues) +
                Any(kBlanks);
      text += "\r\n";
    }
    return text;
  }

  static constexpr const char* kSections[] = {"s", "S", "other", "long name"};
  static constexpr const char* kKeys[] = {"k", "K", "key", "two words", "k2"};
  static constexpr const char* kBlanks[] = {"", "", "", " ", "\t", "  "};
  static constexpr const char* kValues[] = {"",      "v",         "\" \"", "two words",  "\"q\"",
                                            "' q '", "\"",        "'a\"",  "a=b",        "a ; b",
                                            "[s]",   "\"\"q\"\"", "#5",    "c:\\x y.wav"};
  static constexpr const char* kNoise[] = {"",   "; k=1", ";k=2", "noise", "=v",
                                           "[s", "s]",    "]",    "#k=1"};

  std::mt19937 random_{20261121};
  const std::string path_ =
      (std::filesystem::temp_directory_path() / "brindle-profile.ini").string();
};

// The lines that say something, without the blanks at their ends and around their equals signs, in
// any order. Difference 1: when they change one line they tidy up all others, and drop empty ones;
// we leave them alone. Difference 2: a new line goes behind the last one with a key, or to the end
// of the section, which is the same to any reader.
std::multiset<std::string> LinesOf(const std::string& file) {
  std::multiset<std::string> all;
  std::istringstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    const std::string tidy = std::regex_replace(line, std::regex("^\\s+|\\s+$"), "");
    const bool isComment = tidy.starts_with(";");
    all.insert(isComment ? tidy
                         : std::regex_replace(tidy, std::regex("^([^=]*?)\\s*=\\s*"), "$1="));
  }
  all.erase("");
  return all;
}

TEST_F(ProfileStrings, AreReadAndWrittenAlike) {
  for (int i = 0; i < kFiles; ++i) {
    const std::string file = AnyFile();
    SCOPED_TRACE(file);
    SetContent(file);
    ExpectReadAlike(file);
    const Setting setting{Any(kSections), Any(kKeys), Any(kValues), ValueForm::kPlain};
    WritePrivateProfileStringA(setting.section.c_str(), setting.key.c_str(), setting.value.c_str(),
                               path_.c_str());
    SettingsText ours(file);
    ours.Write(setting);
    EXPECT_EQ(LinesOf(ours.Text()), LinesOf(Content()));
    ExpectReadAlike(ours.Text());
  }
}

// Difference 3: what reading would take off a value, blanks or quotes, we keep by further quotes;
// they write it as it is. A sound's path alone we write like them, with a blank in front: one of
// nothing but blanks is no path to us, to them no value.
TEST_F(ProfileStrings, WhatWeWriteTheyRead) {
  for (int i = 0; i < kFiles; ++i) {
    const std::string section = Any(kSections), key = Any(kKeys),
                      value = Any(kBlanks) + Any(kValues);
    SetContent(WriteSettingText(AnyFile(), section, key, value));
    EXPECT_EQ(Theirs(section, key), value) << Content();
  }
}

}  // namespace
}  // namespace brindle
