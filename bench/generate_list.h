#pragma once
// Makes up a server's list file, always the same one for the same number of rows.

#include <cstddef>
#include <fstream>
#include <random>
#include <string>

namespace brindle {

inline constexpr unsigned kListSeed = 20011;

// Writes `rows` mails with titles of 25 to 70 characters; false when the file cannot be written.
inline bool GenerateList(const std::string& path, size_t rows) {
  static constexpr const char* kWords[] = {
      "the",    "best",  "of",      "Summer", "Holiday", "pictures",  "Vol.",    "part",
      "letter", "Music", "archive", "recipe", "Garden",  "notes",     "Weekend", "classic",
      "story",  "In",    "a",       "Night",  "winter",  "Collected", "games",   "and"};
  constexpr size_t kWordCount = sizeof kWords / sizeof *kWords;
  constexpr size_t kShortest = 25;
  constexpr size_t kLongest = 70;
  constexpr size_t kRowsToRareWord = 5000;

  std::ofstream file(path, std::ios::binary);
  std::mt19937 random(kListSeed);  // its numbers are the same everywhere, unlike distributions'
  file << "!mailbot send list\r\n\r\n";
  std::string line;
  for (size_t row = 1; row <= rows; ++row) {
    const size_t length = kShortest + random() % (kLongest - kShortest + 1);
    std::string title = row % kRowsToRareWord == 0 ? "Zeppelin" : kWords[random() % kWordCount];
    while (title.size() < length) {
      title += ' ';
      title += random() % 8 == 0 ? std::to_string(random() % 1000) : kWords[random() % kWordCount];
    }
    title.resize(length);
    if (title.back() == ' ') title.back() = '!';
    line = std::to_string(row) + ". " + title + "\r\n";
    file << line;
  }
  return static_cast<bool>(file.flush());
}

}  // namespace brindle
