// Prints the screen name that the AOL link reads from this machine's windows, in brackets.

#include <utf8proc.h>
#include <windows.h>

#include <cstdio>

#include "aol/screen_name.h"
#include "platform/native.h"

// The Unicode library need not exist for the cross compiler: texts in plain ASCII never reach it,
// and no byte beyond is taken for a character here.
extern "C" {
utf8proc_ssize_t utf8proc_iterate(const utf8proc_uint8_t*, utf8proc_ssize_t, utf8proc_int32_t*) {
  return UTF8PROC_ERROR_INVALIDUTF8;
}
utf8proc_ssize_t utf8proc_encode_char(utf8proc_int32_t, utf8proc_uint8_t*) { return 0; }
utf8proc_int32_t utf8proc_tolower(utf8proc_int32_t character) { return character; }
utf8proc_int32_t utf8proc_toupper(utf8proc_int32_t character) { return character; }
}

namespace {

class MessagePump : public brindle::EventPump {
 public:
  void LetEventsRun(int) override {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
  }
};

}  // namespace

int main() {
  const auto windows = brindle::NativeWindowTree();
  MessagePump events;
  std::printf("[%s]\n", brindle::AolClient(*windows, events).GetAolScreenName().c_str());
  return 0;
}
