#pragma once
// An IRC server with one busy room, in the process of the program that it talks to.

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <deque>
#include <memory>
#include <random>
#include <set>
#include <string>

#include "fuzz/input.h"

namespace brindle::soak {

using fuzz::Require;

class RoomServer : public QTcpServer {
 public:
  // With so many others in the room.
  explicit RoomServer(int others) {
    for (; nextNick_ < others; ++nextNick_) others_.push_back("n" + std::to_string(nextNick_));
    Require(listen(QHostAddress::LocalHost), "no port to listen on");
    connect(this, &QTcpServer::newConnection, this, [this] { Accept(); });
  }

  // One who is in the room says a line.
  void Say() {
    static constexpr const char* kTexts[] = {"hi", "\0034red \00312blue\003 plain \002bold",
                                             "see http://brindle.example/list?a=1 for more",
                                             "caf\u00E9 \U0001F600 \u05D0\u05D1 \u202E odd"};
    const std::string more(random_() % 8 == 0 ? random_() % 380 : 0, 'w');
    Send(":" + others_[random_() % others_.size()] +
         "!u@h PRIVMSG #mailroom :" + kTexts[random_() % 4] + " " + more);
  }
  // One comes or goes, in turn.
  void Move() {
    if ((comes_ = !comes_)) {
      others_.push_back("n" + std::to_string(nextNick_++));
      Send(":" + others_.back() + "!u@h JOIN :#mailroom");
    } else {
      Send(":" + others_.front() + "!u@h PART #mailroom");
      others_.pop_front();
    }
  }
  void Drop(bool orderly) {
    joined = false;
    if (peer_ != nullptr) orderly ? peer_->disconnectFromHost() : peer_->abort();
  }

  size_t Others() const { return others_.size(); }

  bool joined = false;
  size_t ads = 0;
  size_t sessions = 0;
  std::multiset<std::string> requests;  // what was asked for

 private:
  void Accept() {
    peer_.reset(nextPendingConnection());
    peer_->setParent(nullptr);
    joined = false;
    rest_.clear();
    connect(peer_.get(), &QTcpSocket::readyRead, peer_.get(), [this] {
      rest_ += peer_->readAll();
      for (qsizetype end = rest_.indexOf("\r\n"); end >= 0; end = rest_.indexOf("\r\n")) {
        const std::string line = rest_.left(end).toStdString();
        rest_.remove(0, end + 2);
        Answer(line);
      }
    });
  }
  void Answer(const std::string& line) {
    const size_t asks = line.find(" send Jane ");
    if (line.starts_with("USER")) Send(":s 001 me :hi\r\n:s 376 me :End");
    if (line.starts_with("PING ")) Send(":s PONG s " + line.substr(5));
    if (line.starts_with("JOIN")) SendRoom();
    if (line.find("Check out") != std::string::npos) ++ads;
    if (asks != std::string::npos) requests.insert(line.substr(asks + 11));
  }
  void SendRoom() {
    std::string text = ":me!u@h JOIN :#mailroom\r\n:s 332 me #mailroom :Mails";
    size_t count = 0;
    for (const std::string& nick : others_) {
      text += (count++ % 40 == 0 ? "\r\n:s 353 me = #mailroom :" : " ") + nick;
    }
    Send(text + "\r\n:s 353 me = #mailroom :me\r\n:s 366 me #mailroom :End");
    joined = true;
    ++sessions;
  }
  void Send(const std::string& line) {
    if (peer_ == nullptr || peer_->state() != QTcpSocket::ConnectedState) return;
    peer_->write((line + "\r\n").c_str());
  }

  std::unique_ptr<QTcpSocket> peer_;
  QByteArray rest_;
  std::deque<std::string> others_;
  int nextNick_ = 0;
  bool comes_ = false;
  std::mt19937 random_{20261122};
};

}  // namespace brindle::soak
