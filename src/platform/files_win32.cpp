#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <algorithm>

#include "platform/native.h"

namespace brindle {
namespace {

constexpr DWORD kBlock = 64 * 1024;

std::wstring Wide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() { Close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }
  void Close() {
    if (IsOpen()) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_;
};

bool WriteAll(HANDLE file, std::string_view content) {
  while (!content.empty()) {
    const auto part = static_cast<DWORD>(std::min<size_t>(content.size(), kBlock));
    DWORD written = 0;
    if (WriteFile(file, content.data(), part, &written, nullptr) == 0 || written == 0) return false;
    content.remove_prefix(written);
  }
  return true;
}

}  // namespace

std::optional<std::string> NativeFiles::Read(const std::string& path) const {
  const Handle file(CreateFileW(Wide(path).c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) return std::nullopt;
  std::string content;
  for (;;) {
    const size_t size = content.size();
    content.resize(size + kBlock);
    DWORD got = 0;
    if (ReadFile(file.Get(), content.data() + size, kBlock, &got, nullptr) == 0) {
      return std::nullopt;
    }
    content.resize(size + got);
    if (got == 0) return content;
  }
}

bool NativeFiles::Replace(const std::string& path, std::string_view content) {
  const std::wstring target = Wide(path);
  const std::wstring beside = target + L".new";
  // Sharing nothing while it is written keeps a second program out.
  Handle file(CreateFileW(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) return false;
  const bool written = WriteAll(file.Get(), content) && FlushFileBuffers(file.Get()) != 0;
  file.Close();
  if (written && MoveFileExW(beside.c_str(), target.c_str(),
                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) {
    return true;
  }
  DeleteFileW(beside.c_str());
  return false;
}

bool NativeFiles::Remove(const std::string& path) {
  if (DeleteFileW(Wide(path).c_str()) != 0) return true;
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

bool NativeFiles::FileExists(const std::string& path) const {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool IsWritableFolder(const std::string& folder) {
  const std::wstring probe = Wide(folder) + L"\\brindle.probe";
  const Handle file(CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  return file.IsOpen();
}

}  // namespace brindle
