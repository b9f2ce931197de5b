#include "mail/list_fault.h"

#include <optional>

namespace brindle {
namespace {

// Where a file that is no text shows it.
constexpr size_t kLookedAt = 4096;

// Text in UTF-16 has such bytes too, behind its mark.
bool IsBinary(const std::string& start) {
  const bool isUtf16 = start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF");
  return !isUtf16 && start.find('\0') != std::string::npos;
}

}  // namespace

std::string FileNameOf(const std::string& path) {
  const size_t slash = path.find_last_of("/\\");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string WrongWithList(const std::string& path, ReadStatus status, size_t rows) {
  const std::string name = FileNameOf(path);
  switch (status) {
    case ReadStatus::kStopped:
      return "";
    case ReadStatus::kNotOpened:
      return name + " could not be opened.";
    case ReadStatus::kFailed:
      return name + " could not be read to its end.";
    case ReadStatus::kOutOfMemory:
      return name + " is too large for the memory of this computer.";
    case ReadStatus::kComplete:
      break;
  }
  const std::optional<std::string> start = StartOfFile(path, kLookedAt);
  if (start && start->empty()) return name + " is empty.";
  if (start && IsBinary(*start)) return name + " is not a text file.";
  return rows > 0 ? "" : name + " holds no mails: none of its lines begins with a number.";
}

}  // namespace brindle
