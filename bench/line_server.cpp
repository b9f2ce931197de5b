#include "line_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

namespace brindle {
namespace {

bool SendAll(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(sent));
  }
  return true;
}

// One client. False when nobody can come any more.
bool Serve(int listener, size_t lines) {
  const int client = accept(listener, nullptr, nullptr);
  if (client < 0) return false;
  SendAll(client,
          ":server 001 bench :Welcome\r\n:server 376 bench :End of MOTD\r\n"
          ":bench!bench@host JOIN :#room\r\n");
  constexpr size_t kBatch = 1000;
  for (size_t line = 0; line < lines;) {
    std::string batch;
    for (const size_t end = std::min(line + kBatch, lines); line < end; ++line) {
      batch += ":talker" + std::to_string(line % 100) +
               "!user@some.host.example PRIVMSG #room :" + "line " + std::to_string(line) +
               " of a lively room, with some words in it\r\n";
    }
    if (!SendAll(client, batch)) break;
  }
  char farewell[256];
  while (recv(client, farewell, sizeof farewell, 0) > 0) continue;
  close(client);
  return true;
}

}  // namespace

LineServer::LineServer(size_t lines) {
  const int listener = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* any = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener, any, size) == 0 && listen(listener, 1) == 0 &&
      getsockname(listener, any, &size) == 0) {
    std::fflush(stdout);
    process_ = fork();
    if (process_ == 0) {
      while (Serve(listener, lines)) continue;
      _exit(0);
    }
    if (process_ > 0) port_ = ntohs(address.sin_port);
  }
  close(listener);
}

LineServer::~LineServer() {
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

}  // namespace brindle
