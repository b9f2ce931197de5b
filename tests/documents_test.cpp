// What is written for people says the same as the code's tables.

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>

#include "base/text.h"
#include "settings/options.h"

namespace brindle {
namespace {

TEST(Documents, SettingsReferenceHasEveryOptionWithItsFirstValue) {
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
