#pragma once
// A second user for tests: a plain IRC client that sends what it is told and keeps every line it
// receives. It answers the server's PING by itself and understands nothing else.

#include <QHostAddress>
#include <QTcpSocket>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "wait.h"

namespace brindle::test {

class RawClient {
 public:
  explicit RawClient(const char* nick) : nick_(nick) {
    QObject::connect(&socket_, &QTcpSocket::readyRead, &socket_, [this] { Receive(); });
  }

  // Connects and asks to be registered, without waiting for either; several clients can so be
  // registered at the same time.
  void Begin(quint16 port) {
    socket_.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    Send("NICK " + nick_);
    Send("USER " + nick_ + " 0 * :Test user " + nick_);
  }
  bool WaitForWelcome() { return WaitForLine(" 001 "); }

  // Sends one line; the line end is added.
  void Send(const std::string& line) { socket_.write(QByteArray::fromStdString(line + "\r\n")); }
  // Says `text` in a room or to a nick.
  void Say(const std::string& target, const std::string& text) {
    Send("PRIVMSG " + target + " :" + text);
  }
  // Joins and waits for the end of the names.
  bool Join(const std::string& room) {
    Send("JOIN " + room);
    return WaitForLine(" " + room + " :End of ");
  }

  // What came so far of what `nick` has said, to whom first: "#room :text".
  std::vector<std::string> SaidBy(const std::string& nick) const {
    constexpr std::string_view kCommand = " PRIVMSG ";
    std::vector<std::string> said;
    for (const std::string& line : lines_) {
      const size_t at = line.find(kCommand);
      if (at == std::string::npos || !line.starts_with(":" + nick + "!")) continue;
      said.push_back(line.substr(at + kCommand.size()));
    }
    return said;
  }

  // Waits for a line that contains `part` and comes after the last one that was waited for.
  bool WaitForLine(const std::string& part) {
    return WaitUntil([&] {
      while (next_ < lines_.size()) {
        if (lines_[next_++].find(part) != std::string::npos) return true;
      }
      return false;
    });
  }

 private:
  void Receive() {
    while (socket_.canReadLine()) {
      std::string text = socket_.readLine().toStdString();
      while (text.ends_with('\n') || text.ends_with('\r')) text.pop_back();
      if (text.starts_with("PING")) Send("PONG" + text.substr(4));
      lines_.push_back(std::move(text));
    }
  }

  const std::string nick_;
  std::vector<std::string> lines_;
  size_t next_ = 0;  // where the next wait starts to look
  QTcpSocket socket_;
};

}  // namespace brindle::test
