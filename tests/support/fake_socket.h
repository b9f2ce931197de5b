#pragma once
// A chat socket without a network: writes down what it is told.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "irc/chat_socket.h"

namespace brindle {

class FakeSocket : public ChatSocket {
 public:
  void Connect(const std::string& host, int port) override {
    log.push_back("connect " + host + " " + std::to_string(port));
  }
  void Close() override {
    log.push_back("close");
    open = false;
  }
  void Send(std::string_view bytes) override {
    if (!open) return;
    // Only the line end that belongs there is taken off: any other shows up in the comparison.
    const bool ended = bytes.ends_with(kCrLf);
    sent.emplace_back(ended ? bytes.substr(0, bytes.size() - 2) : "no line end");
    if (onSend) onSend();
  }
  bool IsConnected() const override { return open; }

  std::vector<std::string> TakeSent() { return std::exchange(sent, {}); }
  std::vector<std::string> TakeLog() { return std::exchange(log, {}); }

  bool open = false;
  std::vector<std::string> sent;
  std::vector<std::string> log;
  std::function<void()> onSend;
};

}  // namespace brindle
