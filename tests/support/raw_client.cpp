#include "raw_client.h"

#include <QHostAddress>
#include <algorithm>
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

bool RawClient::WaitForWelcome(int timeoutMs) {
  const auto answer = WaitForLine(
      [](const std::string& text) {
        return IsNumeric(text, "001 432 433 436 437 464 465") || text.starts_with("ERROR");
      },
      timeoutMs);
  return answer && IsNumeric(answer->text, "001");
}

bool RawClient::Connect(quint16 port, int timeoutMs) {
  Begin(port);
  return WaitForWelcome(timeoutMs);
}

void RawClient::Send(std::string_view line) {
  socket_.write(line.data(), static_cast<qint64>(line.size()));
  socket_.write("\r\n");
}

void RawClient::Say(std::string_view target, std::string_view text) {
  Send(std::string("PRIVMSG ").append(target).append(" :").append(text));
}

bool RawClient::Join(const std::string& room, int timeoutMs) {
  Send("JOIN " + room);
  const auto answer = WaitForLine(
      [&room](const std::string& text) {
        return IsNumeric(text, "366 403 405 437 471 473 474 475 476") &&
               text.find(" " + room + " ") != std::string::npos;
      },
      timeoutMs);
  return answer && IsNumeric(answer->text, "366");
}

bool RawClient::BecomeOperator(const std::string& name, const std::string& password) {
  Send("OPER " + name + " " + password);
  const auto answer =
      WaitForLine([](const std::string& text) { return IsNumeric(text, "381 464 491"); });
  return answer && IsNumeric(answer->text, "381");
}

bool RawClient::HasReceived(std::string_view part) const {
  return std::any_of(lines_.begin(), lines_.end(), [part](const Line& line) {
    return line.text.find(part) != std::string::npos;
  });
}

std::optional<RawClient::Line> RawClient::WaitForLine(const Predicate& matches, int timeoutMs) {
  std::optional<Line> found;
  WaitUntil(
      [&] {
        // Looked at before the search: a line that came with the close is still found.
        const bool ended = socket_.state() == QAbstractSocket::UnconnectedState;
        found = NextMatch(matches);
        return found.has_value() || ended;
      },
      timeoutMs);
  return found;
}

std::optional<RawClient::Line> RawClient::WaitForLine(const std::string& part, int timeoutMs) {
  return WaitForLine(
      [&part](const std::string& text) { return text.find(part) != std::string::npos; }, timeoutMs);
}

bool RawClient::WaitForClose(int timeoutMs) {
  return WaitUntil([this] { return socket_.state() == QAbstractSocket::UnconnectedState; },
                   timeoutMs);
}

std::optional<RawClient::Line> RawClient::NextMatch(const Predicate& matches) {
  while (next_ < lines_.size()) {
    const Line& line = lines_[next_++];
    if (matches(line.text)) return line;
  }
  return std::nullopt;
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
