#include "catalogue.h"

#include <array>
#include <fstream>
#include <random>
#include <string_view>
#include <utility>

namespace demo {

namespace {

constexpr unsigned kSeed = 20040917;

constexpr std::array<std::string_view, 28> kQualities{
    "Summer",  "Winter",   "Old",    "New",     "Complete", "Little",  "Grand",
    "Silent",  "Midnight", "Golden", "Classic", "Weekend",  "Family",  "Holiday",
    "Harbour", "Mountain", "Paper",  "Wooden",  "Blue",     "Crimson", "Forgotten",
    "Simple",  "Modern",   "Secret", "Rainy",   "Country",  "City",    "Northern"};
constexpr std::array<std::string_view, 32> kSubjects{
    "Photo Album",     "Recipe Book",   "Garden Planner",  "Piano Pieces",
    "Chess Puzzles",   "Train Sounds",  "Letters",         "Screen Savers",
    "Sheet Music",     "Card Games",    "Bird Songs",      "Travel Diary",
    "Knitting Charts", "Star Maps",     "Crossword Pack",  "Clip Art",
    "Fonts",           "Calendar",      "Bedtime Stories", "Guitar Lessons",
    "Wallpapers",      "Budget Sheets", "Sailing Notes",   "Radio Plays",
    "Poems",           "Word Quiz",     "Drum Loops",      "Model Plans",
    "Cookbook",        "Postcards",     "Language Tapes",  "Puzzle Collection"};
constexpr std::array<std::string_view, 10> kTails{
    "for Beginners", "- Second Edition", "(with index)", "from the Attic", "Deluxe",
    "Mini Set",      "Volume Two",       "- Collection", "for Rainy Days", "Revisited"};
constexpr std::array<std::string_view, 6> kSpecials{
    "Caf\xC3\xA9 Piano Pieces",  "Na\xC3\xAFve Poems & Letters", "Postcards from K\xC3\xB6ln",
    "100% Wooden Toys! (plans)", "Recipes: soups, stews; pies",  "\"Quoted\" Radio Plays"};

class Maker {
 public:
  // One title, or the parts of a mail that was too big to go out in one piece.
  std::vector<std::string> Next() {
    if (OneIn(40)) return {std::string(Pick(kSpecials))};
    std::string title(Pick(kQualities));
    title.append(" ").append(Pick(kSubjects));
    if (OneIn(3)) title.append(" ").append(Pick(kTails));
    if (OneIn(6)) title.append(" ").append(std::to_string(1985 + Below(20)));
    if (!OneIn(7)) return {title};

    const unsigned parts = 2 + Below(6);
    std::vector<std::string> mails;
    for (unsigned part = 1; part <= parts; ++part) {
      mails.push_back(title + " [" + std::to_string(part) + "/" + std::to_string(parts) + "]");
    }
    return mails;
  }

 private:
  // The standard fixes what this engine yields but not what its distributions make of it, and the
  // titles are to be the same with every library.
  unsigned Below(size_t limit) { return static_cast<unsigned>(engine_() % limit); }
  bool OneIn(unsigned chances) { return Below(chances) == 0; }
  template <size_t kSize>
  std::string_view Pick(const std::array<std::string_view, kSize>& words) {
    return words[Below(kSize)];
  }

  std::mt19937 engine_{kSeed};
};

}  // namespace

Catalogue::Catalogue(int count) {
  Maker maker;
  while (Count() < count) {
    for (std::string& title : maker.Next()) {
      if (Count() < count) titles_.push_back(std::move(title));
    }
  }
}

bool Catalogue::WriteList(const std::string& path, const std::string& handle) const {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << "Welcome to the mail list of " << handle << "\n"
       << "=============================================\n"
       << "There are " << Count() << " mails in this list. To ask for them, say in the room:\n\n"
       << "!" << handle << " send <your screen name> <number>   or   <first>-<last>\n"
       << "!" << handle << " send <your screen name> status\n\n"
       << "Please ask for an access code before your first request.\n"
       << "---------------------------------------------\n";
  for (int number = 1; number <= Count(); ++number) {
    file << number << ". " << Title(number) << "\n";
  }
  file << "---------------------------------------------\nEnd of the list\n";
  file.flush();
  return file.good();
}

}  // namespace demo
