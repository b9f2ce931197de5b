// The program "updater" beside brindle.exe: puts a fetched program file in its place, once the
// running program has ended, and starts it. Its one argument is the fetched file.

#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <string>

namespace {

constexpr int kTries = 300;
constexpr DWORD kBetweenMilliseconds = 200;  // a minute in all

// With the backslash at its end.
std::wstring OwnFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.rfind(L'\\') + 1);
}

// A running program cannot be replaced, so it is tried until that has ended. The new file is whole
// beside the old one before it takes the name, so there is a program at every moment.
bool Replace(const std::wstring& program, const std::wstring& fetched) {
  const std::wstring beside = program + L".new";
  if (CopyFileW(fetched.c_str(), beside.c_str(), FALSE) == 0) return false;
  for (int i = 0; i < kTries; ++i) {
    if (MoveFileExW(beside.c_str(), program.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) {
      DeleteFileW(fetched.c_str());
      return true;
    }
    Sleep(kBetweenMilliseconds);
  }
  DeleteFileW(beside.c_str());
  return false;
}

bool Start(const std::wstring& program) {
  STARTUPINFOW how{};
  how.cb = sizeof how;
  PROCESS_INFORMATION started{};
  if (CreateProcessW(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how,
                     &started) == 0) {
    return false;
  }
  CloseHandle(started.hThread);
  CloseHandle(started.hProcess);
  return true;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  if (arguments == nullptr || count != 2) return 2;
  const std::wstring program = OwnFolder() + L"brindle.exe";
  const bool replaced = Replace(program, arguments[1]);
  LocalFree(arguments);
  if (!replaced) {
    MessageBoxW(nullptr,
                L"The new version of Brindle could not be put in the place of the old one. Install "
                L"it with its installer.",
                L"Brindle", MB_OK | MB_ICONERROR);
  }
  return Start(program) && replaced ? 0 : 1;
}
