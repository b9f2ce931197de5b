#include "settings/settings_file.h"
#include "settings/product_addresses.h"

#include <gtest/gtest.h>

#include <random>

#include "base/encoding.h"
#include "support/memory.h"

namespace brindle {
namespace {

using namespace std::string_literals;

TEST(SettingsText, ReadsWhatOtherProgramsWrite) {
  std::string longest;
  while (longest.size() < 2 * 999) longest += "\u00E4";
  // What it is about, the text, and the value of key "k" in section "s".
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"plain", "[s]\r\nk=v\r\n", "v"},
      {"other case", "[S]\r\nK=v\r\n", "v"},
      {"blanks and tabs around", " \t[ s ]\r\n\t k \t= \tv w\t \r\n", "v w"},
      {"byte-order mark", "\xEF\xBB\xBF[s]\r\nk=v\r\n", "v"},
      {"UTF-16", "\xFF\xFE[\0s\0]\0\n\0k\0=\0\xE9\0"s, "\u00E9"},
      {"Windows-1252", "; \xE4\r\n[s]\r\nk=caf\xE9 \x80\r\n", "caf\u00E9 \u20AC"},
      {"double quotes", "[s]\r\nk=\" v \"\r\n", " v "},
      {"single quotes", "[s]\r\nk=' v '\r\n", " v "},
      {"quotes that do not match", "[s]\r\nk=\"v'\r\n", "\"v'"},
      {"unknown lines", "k=0\r\nnoise\r\n[s]\r\n\r\nk\r\nk=v\r\n", "v"},
      {"duplicate key", "[s]\r\nk=v\r\nK=w\r\n", "v"},
      {"second section of the name", "[s]\r\n[S]\r\nk=w\r\n", ""},
      {"section cut off, others after it", "[s]\r\n[t\r\nk=v\r\n", "v"},
      {"NUL", "[s]\r\nk=a\0b\r\n"s, "a"},
      {"999 characters", "[s]\r\nk=" + longest, longest},
      {"1000 characters", "[s]\r\nk=" + longest + "x", longest},
  };
  for (const auto& [what, text, value] : cases) {
    EXPECT_EQ(ReadSettingText(text, "s", "k"), value) << what;
  }
}

TEST(SettingsText, WritesOneLineAndKeepsTheRest) {
  // What it is about, the text before, the value that is written, and the text after that.
  const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
      {"in place", "; a\n[s]\nK = old ; b\nx=1\n", "v", "; a\n[s]\nK =v\nx=1\n"},
      {"first of two", "[s]\r\nk=1\r\nk=2\r\n[s]\r\nk=3\r\n", "v",
       "[s]\r\nk=v\r\nk=2\r\n[s]\r\nk=3\r\n"},
      {"new key before the gap", "[s]\nx=1\n\n; t\n[t]\n", "v", "[s]\nx=1\nk=v\n\n; t\n[t]\n"},
      {"unfinished last line", "[s]\nx=1", "v", "[s]\nx=1\nk=v\n"},
      {"unfinished section", "x\r\n[s", "v", "x\r\n[s\r\n[s]\r\nk=v\r\n"},
      {"mark and foreign bytes", "\xEF\xBB\xBF[s]\r\nx=\xE9\r\n", "\u00E9",
       "\xEF\xBB\xBF[s]\r\nx=\xE9\r\nk=\u00E9\r\n"},
      {"quotes", "[s]\r\n", "\"a\"", "[s]\r\nk=\"\"a\"\"\r\n"},
      {"blanks around", "[s]\r\n", " a ", "[s]\r\nk=\" a \"\r\n"},
      {"value with a line of its own", "[s]\r\n", "a\r\n[t]\r\nk=b", "[s]\r\nk=a\r\n"},
  };
  for (const auto& [what, before, value, after] : cases) {
    EXPECT_EQ(WriteSettingText(before, "s", "k", value), after) << what;
  }
}

TEST(SettingsText, RefusesNamesThatTheFormatCannotHold) {
  for (const char* key : {"", "  ", "a=b", ";a", "[a", "\na",
                          "\xEF\xBB\xBF"
                          "a"}) {
    EXPECT_EQ(WriteSettingText("[s]\n", "s", key, "v"), "[s]\n") << key;
  }
  EXPECT_EQ(WriteSettingText("[s]\n", "a]b", "k", "v"), "[s]\n");
  EXPECT_EQ(WriteSettingText("", "s\r\n[t]", "k\r\nx=1", "v"), "[s]\r\nk=v\r\n");
}

TEST(SettingsFile, IsReplacedOnceAndOnlyWhenItCouldBeRead) {
  MemoryFiles files;
  SettingsFile settings(files, "f");
  settings.WriteSettings({{"s", "a", "1"}, {"t", "a", " 2", ValueForm::kPlain}, {"s", "b", "3"}});
  const std::string written = "[s]\r\na=1\r\nb=3\r\n[t]\r\na= 2\r\n";
  EXPECT_EQ(files.files["f"], written);
  EXPECT_EQ(files.changes.size(), 1U);
  EXPECT_EQ(settings.ReadSetting("S", "A", "d"), "1");
  files.unreadable = {"f"};
  EXPECT_EQ(settings.ReadSetting("s", "a", "d"), "d");
  EXPECT_FALSE(settings.WriteSetting("s", "k", "v"));
  EXPECT_EQ(files.files["f"], written);
}

// Random files and values made of what matters to the format.
TEST(SettingsText, AnyValueReadsBackAndDisturbsNoOther) {
  const char* const pieces[] = {"[",  "]",  "=",    ";",      " ",     "\t",     "\r\n",
                                "\n", "\r", "\"",   "'",      "k",     "K=",     "\n[s]\n",
                                "l",  "s",  "\xE9", "\u20AC", "[t]\n", "\nk=\"", "\n[S"};
  const std::vector<std::string> sections = {"s", "t", "new"};
  const std::vector<std::string> keys = {"k", "l", "other"};
  std::mt19937 random(1);
  const auto text = [&](size_t most) {
    std::string made;
    for (size_t n = random() % (most + 1); n > 0; --n) made += pieces[random() % std::size(pieces)];
    return made;
  };
  for (int round = 0; round < 8000; ++round) {
    const Setting setting{sections[random() % 3], keys[random() % 3], text(6)};
    const std::string line = setting.value.substr(0, setting.value.find_first_of("\r\n"));
    if (!IsValidUtf8(line)) continue;  // only a value in UTF-8 can read back as it was
    const std::string original = text(30);
    const SettingsText before(original);
    SettingsText changed(original);
    changed.Write(setting);
    SettingsText after(changed.Text());
    for (const std::string& s : sections) {
      for (const std::string& k : keys) {
        const bool written = s == setting.section && k == setting.key;
        ASSERT_EQ(after.Read(s, k), written ? line : before.Read(s, k)) << before.Text();
      }
    }
    // A second writing of the same changes nothing.
    after.Write(setting);
    ASSERT_EQ(after.Text(), changed.Text()) << before.Text() << "\n" << line;
  }
}

TEST(ProductAddresses, NameTheWebSiteInBothForms) {
  MemoryFiles files;
  SettingsFile settings(files, "ini");
  EXPECT_EQ(ReadProductAddresses(settings).webHost, "www.brindle.example");
  settings.WriteSetting("product", "web", "https://mail.example:81/brindle/");
  settings.WriteSetting("product", "update", "updates.example");
  settings.WriteSetting("product", "update key", "abc=");
  const ProductAddresses addresses = ReadProductAddresses(settings);
  EXPECT_EQ(addresses.web, "https://mail.example:81/brindle/");
  EXPECT_EQ(addresses.webHost, "mail.example:81");
  EXPECT_EQ(addresses.update + " " + addresses.key, "updates.example abc=");
}

}  // namespace
}  // namespace brindle
