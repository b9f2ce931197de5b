#pragma once
// The searches that are remembered between runs, the latest at the end, each with the day on which
// it was last used.

#include <string>

#include "base/clock.h"
#include "base/files.h"
#include "base/observed_list.h"
#include "settings/options.h"
#include "settings/stored_lists.h"

namespace brindle {

class Finds {
 public:
  // `path` is the file that keeps them. All must outlive this.
  Finds(Files& files, const std::string& path, const Options& options, const Clock& clock)
      : files_(files), path_(path), options_(options), clock_(clock) {}

  const ObservedList<Find>& Items() const { return items_; }

  // Reads the file anew, without the searches that the user wants dropped.
  void Load();

  // Writes them. A file that is there but could not be read is left alone.
  void Save();

  // Puts a search at the end, with the day of today. It takes the place of one that differs only in
  // case and blanks.
  void Remember(const std::string& text);

  // Forgets all, and deletes the file.
  void Clear();

 private:
  DayNumber Today() const { return DayOf(clock_.LocalTime()); }

  Files& files_;
  const std::string& path_;
  const Options& options_;
  const Clock& clock_;
  ObservedList<Find> items_;
  bool unreadable_ = false;
};

}  // namespace brindle
