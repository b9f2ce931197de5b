#include "settings/settings_file.h"
#include "settings/product_addresses.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "base/text.h"
#include "support/memory_files.h"

namespace brindle {
namespace {

using namespace std::string_literals;

std::string Repeated(std::string_view piece, size_t times) {
  std::string text;
  while (times-- > 0) text += piece;
  return text;
}

struct ReadCase {
  const char* what;
  std::string text;
  std::string value;  // of key "k" in section "s"
};

TEST(SettingsText, ReadsWhatOtherProgramsWrite) {
  const ReadCase cases[] = {
      {"plain", "[s]\r\nk=v\r\n", "v"},
      {"LF", "[s]\nk=v\n", "v"},
      {"CR", "[s]\rk=v\r", "v"},
      {"no line end at the end", "[s]\r\nk=v", "v"},
      {"other case", "[S]\r\nK=v\r\n", "v"},
      {"blanks and tabs around", " \t[ s ]\r\n\t k \t= \tv w\t \r\n", "v w"},
      {"byte-order mark", "\xEF\xBB\xBF[s]\r\nk=v\r\n", "v"},
      {"UTF-16", "\xFF\xFE[\0s\0]\0\n\0k\0=\0\xE9\0"s, "\u00E9"},
      {"Windows-1252", "; \xE4\r\n[s]\r\nk=caf\xE9 \x80\r\n", "caf\u00E9 \u20AC"},
      {"double quotes", "[s]\r\nk=\" v \"\r\n", " v "},
      {"single quotes", "[s]\r\nk=' v '\r\n", " v "},
      {"one pair only", "[s]\r\nk=\"\"v\"\"\r\n", "\"v\""},
      {"quotes that do not match", "[s]\r\nk=\"v'\r\n", "\"v'"},
      {"one quote", "[s]\r\nk=\"\r\n", "\""},
      {"blanks only", "[s]\r\nk= \r\n", " "},
      {"empty", "[s]\r\nk=\r\n", ""},
      {"equals sign in the value", "[s]\r\nk=a=b\r\n", "a=b"},
      {"semicolon in the value", "[s]\r\nk=a ;b\r\n", "a ;b"},
      {"comments", "; k=0\r\n[s]\r\n;k=1\r\n ; k=2\r\nk=v\r\n", "v"},
      {"unknown lines", "k=0\r\nnoise\r\n[s]\r\n\r\nk\r\nk=v\r\n", "v"},
      {"duplicate key", "[s]\r\nk=v\r\nK=w\r\n", "v"},
      {"duplicate section", "[s]\r\nk=v\r\n[t]\r\n[S]\r\nk=w\r\n", "v"},
      {"second section of the name", "[s]\r\n[S]\r\nk=w\r\n", ""},
      {"key of another section", "[s]\r\n[t]\r\nk=v\r\n", ""},
      {"section cut off", "[t]\r\nk=w\r\n[s", ""},
      {"section cut off, others after it", "[s]\r\n[t\r\nk=v\r\n", "v"},
      {"key cut off", "[s]\r\nk", ""},
      {"NUL", "[s]\r\nk=a\0b\r\n"s, "a"},
      {"999 characters", "[s]\r\nk=" + Repeated("\u00E4", 999), Repeated("\u00E4", 999)},
      {"1000 characters", "[s]\r\nk=" + Repeated("\u00E4", 1000), Repeated("\u00E4", 999)},
      {"nothing", "", ""},
  };
  for (const ReadCase& c : cases) EXPECT_EQ(ReadSettingText(c.text, "s", "k"), c.value) << c.what;
}

struct WriteCase {
  const char* what;
  std::string before;
  std::string value;
  std::string after;
};

TEST(SettingsText, WritesOneLineAndKeepsTheRest) {
  const WriteCase cases[] = {
      {"new file", "", "v", "[s]\r\nk=v\r\n"},
      {"in place", "; a\n[s]\nK = old ; b\nx=1\n", "v", "; a\n[s]\nK =v\nx=1\n"},
      {"first of two", "[s]\r\nk=1\r\nk=2\r\n[s]\r\nk=3\r\n", "v",
       "[s]\r\nk=v\r\nk=2\r\n[s]\r\nk=3\r\n"},
      {"new key before the gap", "[s]\nx=1\n\n; t\n[t]\n", "v", "[s]\nx=1\nk=v\n\n; t\n[t]\n"},
      {"new key in an empty section", "[s]\n\n[t]\nk=1\n", "v", "[s]\nk=v\n\n[t]\nk=1\n"},
      {"unfinished last line", "[s]\nx=1", "v", "[s]\nx=1\nk=v\n"},
      {"unfinished section", "x\r\n[s", "v", "x\r\n[s\r\n[s]\r\nk=v\r\n"},
      {"mark and foreign bytes", "\xEF\xBB\xBF[s]\r\nx=\xE9\r\n", "\u00E9",
       "\xEF\xBB\xBF[s]\r\nx=\xE9\r\nk=\u00E9\r\n"},
      {"quotes", "[s]\r\n", "\"a\"", "[s]\r\nk=\"\"a\"\"\r\n"},
      {"blanks around", "[s]\r\n", " a ", "[s]\r\nk=\" a \"\r\n"},
      {"blanks only", "[s]\r\n", "  ", "[s]\r\nk=  \r\n"},
      {"value with a line of its own", "[s]\r\n", "a\r\n[t]\r\nk=b", "[s]\r\nk=a\r\n"},
      {"emptied", "[s]\r\nk=a\r\n", "", "[s]\r\nk=\r\n"},
  };
  for (const WriteCase& c : cases) {
    EXPECT_EQ(WriteSettingText(c.before, "s", "k", c.value), c.after) << c.what;
  }
}

TEST(SettingsText, RefusesNamesThatTheFormatCannotHold) {
  for (const char* key : {"", "  ", "a=b", ";a", "[a", "\na"}) {
    EXPECT_EQ(WriteSettingText("[s]\n", "s", key, "v"), "[s]\n") << key;
  }
  EXPECT_EQ(WriteSettingText("[s]\n", "a]b", "k", "v"), "[s]\n");
  EXPECT_EQ(WriteSettingText("", "s\r\n[t]", "k\r\nx=1", "v"), "[s]\r\nk=v\r\n");
}

TEST(SettingsText, LeadingNumberIsLenient) {
  const std::pair<const char*, long long> cases[] = {
      {"12", 12}, {" 12x", 12}, {"-1", -1}, {"+7", 7},  {"", 0},
      {"x1", 0},  {"1.9", 1},   {"+-3", 0}, {"- 3", 0}, {"99999999999999999999", INT64_MAX},
  };
  for (const auto& [text, number] : cases) EXPECT_EQ(LeadingNumber(text), number) << text;
}

TEST(SettingsFile, DefaultStandsInForWhatIsMissingOrEmpty) {
  MemoryFiles files;
  SettingsFile settings(files, "f");
  EXPECT_EQ(settings.ReadSetting("s", "k", "d"), "d");
  files.files["f"] = "[s]\r\nk=\r\nblank= \r\n";
  EXPECT_EQ(settings.ReadSetting("s", "k", "d"), "d");
  EXPECT_EQ(settings.ReadSetting("s", "k"), "");
  EXPECT_EQ(settings.ReadSetting("s", "blank", "d"), " ");
  EXPECT_TRUE(settings.WriteSetting("s", "k", "v"));
  EXPECT_EQ(settings.ReadSetting("S", "K", "d"), "v");
}

TEST(SettingsFile, SeveralSettingsAreOneReplacement) {
  MemoryFiles files;
  SettingsFile settings(files, "f");
  settings.WriteSettings({{"s", "a", "1"}, {"t", "a", " 2", ValueForm::kPlain}, {"s", "b", "3"}});
  EXPECT_EQ(files.files["f"], "[s]\r\na=1\r\nb=3\r\n[t]\r\na= 2\r\n");
  EXPECT_EQ(files.changes.size(), 1U);
}

TEST(SettingsFile, LeavesAFileAloneThatItCannotRead) {
  MemoryFiles files;
  files.files["f"] = "[s]\r\nprecious=1\r\n";
  files.unreadable = {"f"};
  EXPECT_EQ(ReadSetting(files, "s", "precious", "d", "f"), "d");
  EXPECT_FALSE(WriteSetting(files, "s", "k", "v", "f"));
  EXPECT_EQ(files.files["f"], "[s]\r\nprecious=1\r\n");
}

// Random files and values made of what matters to the format.
class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::string Text(size_t most) {
    static const std::string kPieces[] = {
        "[", "]",  "=",       ";", " ", "\t",   "\r\n",   "\n",    "\r",     "\"",  "'",
        "k", "K=", "\n[s]\n", "l", "s", "\xE9", "\u20AC", "[t]\n", "\nk=\"", "\n[S"};
    std::string text;
    for (size_t n = Below(most + 1); n > 0; --n) text += kPieces[Below(std::size(kPieces))];
    return text;
  }
  size_t Below(size_t end) { return std::uniform_int_distribution<size_t>(0, end - 1)(random_); }

 private:
  std::mt19937 random_;
};

TEST(SettingsText, AnyValueReadsBackAndDisturbsNoOther) {
  const std::string sections[] = {"s", "t", "new"};
  const std::string keys[] = {"k", "l", "other"};
  for (unsigned seed = 0; seed < 20000; ++seed) {
    Generator generator(seed);
    const std::string before = generator.Text(30);
    const std::string& section = sections[generator.Below(3)];
    const std::string& key = keys[generator.Below(3)];
    std::string value = generator.Text(6);
    // Only a value in UTF-8 can read back as it was.
    std::erase(value, '\xE9');
    const std::string after = WriteSettingText(before, section, key, value);

    const std::string oneLine = value.substr(0, value.find_first_of("\r\n"));
    ASSERT_EQ(ReadSettingText(after, section, key), oneLine) << "seed " << seed;
    for (const std::string& s : sections) {
      for (const std::string& k : keys) {
        if (s == section && k == key) continue;
        ASSERT_EQ(ReadSettingText(after, s, k), ReadSettingText(before, s, k)) << "seed " << seed;
      }
    }
    // A second writing of the same changes nothing.
    ASSERT_EQ(WriteSettingText(after, section, key, value), after) << "seed " << seed;
  }
}

TEST(ProductAddresses, NameTheWebSiteInBothForms) {
  MemoryFiles files;
  SettingsFile settings(files, "ini");
  EXPECT_EQ(ReadProductAddresses(settings).webHost, "www.brindle.example");
  settings.WriteSetting("product", "web", "https://mail.example:81/brindle/");
  settings.WriteSetting("product", "update", "updates.example");
  const ProductAddresses addresses = ReadProductAddresses(settings);
  EXPECT_EQ(addresses.web, "https://mail.example:81/brindle/");
  EXPECT_EQ(addresses.webHost, "mail.example:81");
  EXPECT_EQ(addresses.update, "updates.example");
}

}  // namespace
}  // namespace brindle
