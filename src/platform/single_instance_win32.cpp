#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <filesystem>

#include "platform/single_instance.h"

namespace brindle {
namespace {

HANDLE Handle(std::intptr_t file) { return reinterpret_cast<HANDLE>(file); }

// In the form that may be longer than 260 characters.
std::wstring LongPath(const std::string& utf8) {
  std::error_code ignored;
  const std::filesystem::path path(std::u8string(utf8.begin(), utf8.end()));
  const std::wstring full = std::filesystem::absolute(path, ignored).make_preferred().wstring();
  const bool isOnDrive = full.size() > 2 && full[1] == L':';
  return isOnDrive ? LR"(\\?\)" + full : full;
}

}  // namespace

// Opened for nobody else, and removed by the system when it is closed, by us or by the end of the
// process. A file that was left behind by a loss of power is opened as it is.
SingleInstance::SingleInstance(const std::string& folder) : path_(folder + "/brindle.lock") {
  const HANDLE file =
      CreateFileW(LongPath(path_).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr,
                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  file_ = reinterpret_cast<std::intptr_t>(file);
  another_ = file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION;
}

SingleInstance::~SingleInstance() {
  if (file_ != kNoFile) CloseHandle(Handle(file_));
}

}  // namespace brindle
