#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <filesystem>

#include "platform/single_instance.h"

namespace brindle {
namespace {

HANDLE Handle(std::intptr_t file) { return reinterpret_cast<HANDLE>(file); }

}  // namespace

// Opened for nobody else, and removed by the system when it is closed, by us or by the end of the
// process. A file that was left behind by a loss of power is opened as it is.
SingleInstance::SingleInstance(const std::string& folder) : path_(folder + "/brindle.lock") {
  const std::filesystem::path path(std::u8string(path_.begin(), path_.end()));
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  file_ = reinterpret_cast<std::intptr_t>(file);
  another_ = file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION;
}

SingleInstance::~SingleInstance() {
  if (file_ != kNoFile) CloseHandle(Handle(file_));
}

}  // namespace brindle
