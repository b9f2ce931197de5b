#pragma once
// Where the program keeps its files.

#include <string>

namespace brindle {

struct FolderFacts {
  std::string chosen;  // what --data-dir says; empty when it is not given
  std::string program;
  bool programIsWritable = false;
  bool programHasSettings = false;  // brindle.ini is there
  std::string user;                 // the system's configuration folder of this user
};

// The chosen folder if any; else beside the program where that can work or is wanted (portable
// use); else the user's own folder.
std::string DataFolder(const FolderFacts& facts);

inline constexpr const char* kSettingsName = "brindle.ini";

// The full paths of the program's files.
struct DataPaths {
  std::string settings;
  std::string channels;
  std::string servers;
  std::string finds;
};
DataPaths PathsIn(const std::string& folder);

}  // namespace brindle
