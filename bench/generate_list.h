#pragma once
// Makes up a server's list file, always the same one for the same number of rows.

#include <array>
#include <cstddef>
#include <fstream>
#include <random>
#include <string>

#include "base/utf8.h"

namespace brindle {

inline constexpr unsigned kListSeed = 20011;

// What the titles of a list are made of.
struct ListWords {
  const char* name;
  std::array<const char*, 24> words;
  const char* rareWord;  // one in 5000 titles begins with it
  size_t bytes;          // of most characters
};

inline constexpr ListWords kAscii = {
    "ascii",
    {"the",    "best",  "of",      "Summer", "Holiday", "pictures",  "Vol.",    "part",
     "letter", "Music", "archive", "recipe", "Garden",  "notes",     "Weekend", "classic",
     "story",  "In",    "a",       "Night",  "winter",  "Collected", "games",   "and"},
    "Zeppelin",
    1};
inline constexpr ListWords kCyrillic = {
    "cyrillic",
    {"это",     "лучшее", "из",    "Лето",   "Праздник", "картинки", "Том",      "часть",
     "письмо",  "Музыка", "архив", "рецепт", "Сад",      "заметки",  "Выходные", "классика",
     "рассказ", "В",      "на",    "Ночь",   "зима",     "Собрание", "игры",     "и"},
    "Цеппелин",
    2};
// In the bytes of that encoding.
inline constexpr ListWords kWindows1252 = {"windows-1252",
                                           {"\xE9t\xE9",
                                            "meilleur",
                                            "de",
                                            "Printemps",
                                            "F\xEAte",
                                            "images",
                                            "Vol.",
                                            "partie",
                                            "lettre",
                                            "Musique",
                                            "archive",
                                            "recette",
                                            "For\xEAt",
                                            "notes",
                                            "Vacances",
                                            "classique",
                                            "r\xE9"
                                            "cit",
                                            "Dans",
                                            "un",
                                            "Nuit",
                                            "hiver",
                                            "Fran\xE7ois",
                                            "jeux",
                                            "et"},
                                           "Z\xE9phyr",
                                           1};

// Writes `rows` mails with titles of 25 to 70 characters; false when the file cannot be written.
inline bool GenerateList(const std::string& path, size_t rows, const ListWords& of = kAscii) {
  constexpr size_t kShortest = 25;
  constexpr size_t kLongest = 70;
  constexpr size_t kRowsToRareWord = 5000;

  std::ofstream file(path, std::ios::binary);
  std::mt19937 random(kListSeed);  // its numbers are the same everywhere, unlike distributions'
  file << "!mailbot send list\r\n\r\n";
  std::string line;
  for (size_t row = 1; row <= rows; ++row) {
    const size_t length = of.bytes * (kShortest + random() % (kLongest - kShortest + 1));
    const auto word = [&] { return of.words[random() % of.words.size()]; };
    std::string title = row % kRowsToRareWord == 0 ? of.rareWord : word();
    while (title.size() < length) {
      title += ' ';
      title += random() % 8 == 0 ? std::to_string(random() % 1000) : word();
    }
    title.resize(CharacterBegin(title, length));
    if (title.back() == ' ') title.back() = '!';
    line = std::to_string(row) + ". " + title + "\r\n";
    file << line;
  }
  return static_cast<bool>(file.flush());
}

}  // namespace brindle
