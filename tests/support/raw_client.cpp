#include "raw_client.h"

#include <QHostAddress>
#include <utility>

#include "wait.h"

namespace brindle::test {

RawClient::RawClient(const char* nick) : nick_(nick) {
  clock_.start();
  QObject::connect(&socket_, &QTcpSocket::readyRead, &socket_, [this] { Receive(); });
}

void RawClient::Begin(quint16 port) {
  socket_.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
  Send("NICK " + nick_);
  Send("USER " + nick_ + " 0 * :Test user " + nick_);
}

bool RawClient::Connect(quint16 port) {
  Begin(port);
  return WaitForWelcome();
}

void RawClient::Send(std::string_view line) {
  socket_.write(line.data(), static_cast<qint64>(line.size()));
  socket_.write("\r\n");
}

void RawClient::Say(std::string_view target, std::string_view text) {
  Send(std::string("PRIVMSG ").append(target).append(" :").append(text));
}

bool RawClient::Join(const std::string& room) {
  Send("JOIN " + room);
  return WaitForLine(" " + room + " :End of ");
}

std::vector<RawClient::Line> RawClient::SaidBy(const std::string& nick) const {
  constexpr std::string_view kCommand = " PRIVMSG ";
  std::vector<Line> said;
  for (const auto& [time, text] : lines_) {
    const size_t at = text.find(kCommand);
    if (at == std::string::npos || !text.starts_with(":" + nick + "!")) continue;
    said.push_back({time, text.substr(at + kCommand.size())});
  }
  return said;
}

bool RawClient::WaitForLine(const std::string& part) {
  const auto comes = [&] {
    while (next_ < lines_.size()) {
      if (lines_[next_++].text.find(part) != std::string::npos) return true;
    }
    return false;
  };
  return WaitUntil(comes, kTimeoutMs);
}

void RawClient::Receive() {
  while (socket_.canReadLine()) {
    std::string text = socket_.readLine().toStdString();
    while (text.ends_with('\n') || text.ends_with('\r')) text.pop_back();
    if (text.starts_with("PING")) Send("PONG" + text.substr(4));
    lines_.push_back({Now(), std::move(text)});
  }
}

}  // namespace brindle::test
