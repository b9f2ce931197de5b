#include "raw_client.h"

#include <QHostAddress>
#include <utility>

#include "wait.h"

namespace brindle::test {
namespace {

// True when `text` is one of the numerics in `numbers`, which are separated by blanks.
bool IsNumeric(const std::string& text, std::string_view numbers) {
  const size_t start = text.find(' ');
  if (start == std::string::npos || text.size() < start + 4) return false;
  return numbers.find(std::string_view(text).substr(start + 1, 3)) != std::string_view::npos;
}

}  // namespace

RawClient::RawClient(std::string nick) : nick_(std::move(nick)) {
  clock_.start();
  QObject::connect(&socket_, &QTcpSocket::readyRead, &socket_, [this] { Receive(); });
}

void RawClient::Begin(quint16 port) {
  socket_.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
  Send("NICK " + nick_);
  Send("USER " + nick_ + " 0 * :Test user " + nick_);
}

bool RawClient::WaitForWelcome() {
  const auto answer = WaitForLine([](const std::string& text) {
    return IsNumeric(text, "001 432 433 436 437 464 465") || text.starts_with("ERROR");
  });
  return answer && IsNumeric(answer->text, "001");
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
  const auto answer = WaitForLine([&room](const std::string& text) {
    return IsNumeric(text, "366 403 405 437 471 473 474 475 476") &&
           text.find(" " + room + " ") != std::string::npos;
  });
  return answer && IsNumeric(answer->text, "366");
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

std::optional<RawClient::Line> RawClient::WaitForLine(const Predicate& matches) {
  std::optional<Line> found;
  WaitUntil(
      [&] {
        // Looked at before the search: a line that came with the close is still found.
        const bool ended = socket_.state() == QAbstractSocket::UnconnectedState;
        while (!found && next_ < lines_.size()) {
          const Line& line = lines_[next_++];
          if (matches(line.text)) found = line;
        }
        return found.has_value() || ended;
      },
      kTimeoutMs);
  return found;
}

std::optional<RawClient::Line> RawClient::WaitForLine(const std::string& part) {
  return WaitForLine(
      [&part](const std::string& text) { return text.find(part) != std::string::npos; });
}

void RawClient::Receive() {
  while (socket_.canReadLine()) {
    std::string text = socket_.readLine().toStdString();
    while (text.ends_with('\n') || text.ends_with('\r')) text.pop_back();
    if (text.starts_with("PING")) Send("PONG" + text.substr(4));
    lines_.push_back({clock_.elapsed(), std::move(text)});
  }
}

}  // namespace brindle::test
