#include "libircclient_count.h"

#include <libircclient.h>
#include <sys/select.h>

namespace brindle {
namespace {

void CountLine(irc_session_t* session, const char*, const char*, const char**, unsigned) {
  ++*static_cast<size_t*>(irc_get_ctx(session));
}

}  // namespace

size_t CountWithLibircclient(int port, size_t lines) {
  size_t counted = 0;
  irc_callbacks_t callbacks{};
  callbacks.event_channel = CountLine;
  irc_session_t* session = irc_create_session(&callbacks);
  irc_set_ctx(session, &counted);
  irc_connect(session, "127.0.0.1", static_cast<unsigned short>(port), nullptr, "bench", "bench",
              "bench");
  while (irc_is_connected(session) != 0 && counted < lines) {
    fd_set in;
    fd_set out;
    FD_ZERO(&in);
    FD_ZERO(&out);
    int highest = 0;
    irc_add_select_descriptors(session, &in, &out, &highest);
    if (select(highest + 1, &in, &out, nullptr, nullptr) < 0) break;
    if (irc_process_select_descriptors(session, &in, &out) != 0) break;
  }
  irc_destroy_session(session);
  return counted;
}

}  // namespace brindle
