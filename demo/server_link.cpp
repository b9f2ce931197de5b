#include "server_link.h"

#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <utility>

namespace demo {

namespace {

constexpr std::chrono::milliseconds kBetweenLines{100};
constexpr std::chrono::milliseconds kBetweenAttempts{100};
constexpr size_t kLongestQueue = 2000;

int TryConnect(const addrinfo* addresses) {
  for (const addrinfo* a = addresses; a != nullptr; a = a->ai_next) {
    const int descriptor = socket(a->ai_family, a->ai_socktype | SOCK_CLOEXEC, a->ai_protocol);
    if (descriptor < 0) continue;
    if (connect(descriptor, a->ai_addr, a->ai_addrlen) == 0) return descriptor;
    close(descriptor);
  }
  return -1;
}

}  // namespace

ServerLink::~ServerLink() {
  if (socket_ >= 0) close(socket_);
}

bool ServerLink::Connect(const std::string& host, const std::string& port,
                         std::chrono::seconds patience) {
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* addresses = nullptr;
  if (getaddrinfo(host.c_str(), port.c_str(), &hints, &addresses) != 0) return false;

  const Moment deadline = std::chrono::steady_clock::now() + patience;
  socket_ = TryConnect(addresses);
  while (socket_ < 0 && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(kBetweenAttempts);
    socket_ = TryConnect(addresses);
  }
  freeaddrinfo(addresses);
  return socket_ >= 0 && fcntl(socket_, F_SETFL, O_NONBLOCK) == 0;
}

bool ServerLink::Receive() {
  char buffer[4096];
  while (true) {
    const ssize_t count = recv(socket_, buffer, sizeof buffer, 0);
    if (count > 0) {
      reader_.Feed({buffer, static_cast<size_t>(count)});
    } else if (count < 0 && errno == EINTR) {
      continue;
    } else {
      return count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
    }
  }
}

void ServerLink::Queue(std::string line, Order order) {
  if (queue_.size() >= kLongestQueue) return;
  line += "\r\n";
  // The front line may be half written; nothing may come between its two halves, so a line that
  // goes first still waits for it. Half-written lines are so rare that the delay does not matter.
  if (order == Order::kFirst && !queue_.empty()) {
    queue_.insert(queue_.begin() + 1, std::move(line));
  } else {
    queue_.push_back(std::move(line));
  }
}

bool ServerLink::SendDue(Moment now) {
  if (queue_.empty() || now < earliestSend_) return true;
  std::string& line = queue_.front();
  const ssize_t count = send(socket_, line.data(), line.size(), MSG_NOSIGNAL);
  if (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR) return false;
  earliestSend_ = now + kBetweenLines;
  if (count > 0) line.erase(0, static_cast<size_t>(count));
  if (line.empty()) queue_.pop_front();
  return true;
}

std::optional<Moment> ServerLink::NextSend() const {
  if (queue_.empty()) return std::nullopt;
  return earliestSend_;
}

}  // namespace demo
