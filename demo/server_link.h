#pragma once
// The bot's connection to the IRC server: whole lines in, paced lines out. Nothing here blocks
// except Connect.

#include <chrono>
#include <deque>
#include <optional>
#include <string>

#include "irc_line.h"

namespace demo {

using Moment = std::chrono::steady_clock::time_point;

class ServerLink {
 public:
  ServerLink() = default;
  ~ServerLink();
  ServerLink(const ServerLink&) = delete;
  ServerLink& operator=(const ServerLink&) = delete;

  // Tries again until the server accepts or `patience` is over; false then, or for a bad host.
  bool Connect(const std::string& host, const std::string& port, std::chrono::seconds patience);

  // The descriptor to poll for reading; -1 before Connect.
  int Descriptor() const { return socket_; }

  // Takes in what has arrived; false once the server has closed or the connection failed. Lines
  // taken in before that can still be read with NextLine.
  bool Receive();
  std::optional<std::string> NextLine() { return reader_.Next(); }

  enum class Order { kInTurn, kFirst };
  // Queues a line, without its line end. A full queue drops it.
  void Queue(std::string line, Order order = Order::kInTurn);

  // Writes the next queued line if the last one is long enough ago; false when the connection
  // failed.
  bool SendDue(Moment now);

  // When SendDue has something to do next; nothing when the queue is empty.
  std::optional<Moment> NextSend() const;

 private:
  int socket_ = -1;
  LineReader reader_;
  std::deque<std::string> queue_;
  Moment earliestSend_{};
};

}  // namespace demo
