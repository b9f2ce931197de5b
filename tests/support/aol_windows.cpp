// Opens real windows of the classes that the AOL client registers, as it shows them once a user is
// signed on, and keeps them open until it is ended. For tests on Windows.
//
//   aol_windows CAPTION READY-FILE
//
// READY-FILE is created as soon as the windows stand.

#include <windows.h>

#include <cstdio>

namespace {

constexpr char kFrameClass[] = "AOL Frame25";
constexpr char kChildClass[] = "AOL Child";
constexpr char kMdiClass[] = "MDIClient";

HWND Open(const char* className, const char* caption, DWORD style, HWND parent) {
  return CreateWindowExA(0, className, caption, style | WS_VISIBLE, 0, 0, 40, 20, parent, nullptr,
                         GetModuleHandleA(nullptr), nullptr);
}

void RegisterClassNamed(const char* name) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = DefWindowProcA;
  windowClass.hInstance = GetModuleHandleA(nullptr);
  windowClass.lpszClassName = name;
  RegisterClassA(&windowClass);
}

// A document window and its parts; false when one could not be opened.
bool OpenDocument(HWND mdi, const char* caption, int icons) {
  const struct {
    const char* className;
    int count;
  } parts[] = {{"_AOL_Glyph", 2}, {"RICHCNTLSTATIC", 2}, {"_AOL_Static", 1}, {"_AOL_Icon", icons}};
  const HWND document = Open(kChildClass, caption, WS_CHILD, mdi);
  if (document == nullptr) return false;
  for (const auto& part : parts) {
    RegisterClassNamed(part.className);
    for (int i = 0; i < part.count; ++i) {
      if (Open(part.className, "", WS_CHILD, document) == nullptr) return false;
    }
  }
  return true;
}

}  // namespace

int main(int count, char** texts) {
  if (count != 3) return 2;
  RegisterClassNamed(kFrameClass);
  RegisterClassNamed(kChildClass);
  const HWND frame = Open(kFrameClass, "America Online", WS_OVERLAPPEDWINDOW, nullptr);
  CLIENTCREATESTRUCT client{nullptr, 1};
  const HWND mdi = CreateWindowExA(0, kMdiClass, "", WS_CHILD | WS_VISIBLE, 0, 0, 400, 300, frame,
                                   nullptr, GetModuleHandleA(nullptr), &client);
  // Two documents that are not the welcome window, one on either side of it.
  if (frame == nullptr || mdi == nullptr || !OpenDocument(mdi, "Welcome to the sports page", 25) ||
      !OpenDocument(mdi, texts[1], 26) || !OpenDocument(mdi, "Buddy List", 30)) {
    std::fprintf(stderr, "a window could not be opened: error %lu\n", GetLastError());
    return 1;
  }
  std::FILE* ready = std::fopen(texts[2], "w");
  if (ready == nullptr) return 1;
  std::fclose(ready);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return 0;
}
