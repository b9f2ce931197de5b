#pragma once
// Keeps what the search window remembers in the settings file and in finds.txt.

#include <string>

#include "base/clock.h"
#include "base/files.h"
#include "mail/results.h"
#include "settings/options.h"
#include "settings/settings_file.h"

namespace brindle {

class StoredResults : public ResultsStore {
 public:
  StoredResults(SettingsFile& settings, Files& files, const std::string& findsPath,
                const Options& options, const Clock& clock)
      : settings_(settings),
        files_(files),
        findsPath_(findsPath),
        options_(options),
        clock_(clock) {}

  std::string LastSearch() override { return settings_.ReadSetting("find", "last"); }
  void SetLastSearch(const std::string& text) override;
  std::vector<Find> Finds() override;
  // A file that is there but could not be read is left alone.
  void SetFinds(const std::vector<Find>& finds) override;
  ResultsGeometry Geometry() override;
  void SetGeometry(const ResultsGeometry& geometry) override;
  DayNumber Today() override { return DayOf(clock_.LocalTime()); }

 private:
  SettingsFile& settings_;
  Files& files_;
  const std::string& findsPath_;
  const Options& options_;
  const Clock& clock_;
  bool unreadable_ = false;
};

}  // namespace brindle
