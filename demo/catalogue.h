#pragma once
// The mails that the demo bot pretends to have: invented titles, the same ones in every run, and
// the list file that tells users about them.

#include <string>
#include <vector>

namespace demo {

class Catalogue {
 public:
  // Makes up titles for mails 1 to `count`. REQUIRES: count >= 1.
  explicit Catalogue(int count);

  int Count() const { return static_cast<int>(titles_.size()); }

  // REQUIRES: 1 <= number <= Count().
  const std::string& Title(int number) const { return titles_[static_cast<size_t>(number - 1)]; }

  // Writes the list file of the bot called `handle`; false when the file cannot be written.
  bool WriteList(const std::string& path, const std::string& handle) const;

 private:
  std::vector<std::string> titles_;
};

}  // namespace demo
