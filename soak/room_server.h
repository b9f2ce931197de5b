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

struct RoomServer : QTcpServer {
  explicit RoomServer(int count) {
    while (nextNick < count) others.push_back("n" + std::to_string(nextNick++));
    Require(listen(QHostAddress::LocalHost), "no port to listen on");
    connect(this, &QTcpServer::newConnection, this, [this] {
      peer.reset(nextPendingConnection());
      peer->setParent(nullptr);
      joined = false;
      connect(peer.get(), &QTcpSocket::readyRead, peer.get(), [this] {
        while (peer->canReadLine()) Answer(peer->readLine().trimmed().toStdString());
      });
    });
  }
  // One who is in the room says a line.
  void Say() {
    static constexpr const char* kTexts[] = {"hi", "\0034red \00312blue\003 plain \002bold",
                                             "see http://brindle.example/list?a=1 for more",
                                             "caf\u00E9 \U0001F600 \u05D0\u05D1 \u202E odd"};
    const std::string more(random() % 8 == 0 ? random() % 380 : 0, 'w');
    Send(":" + others[random() % others.size()] +
         "!u@h PRIVMSG #mailroom :" + kTexts[random() % 4] + " " + more);
  }
  // One comes or goes, in turn.
  void Move() {
    if ((comes = !comes)) {
      others.push_back("n" + std::to_string(nextNick++));
      Send(":" + others.back() + "!u@h JOIN :#mailroom");
    } else {
      Send(":" + others.front() + "!u@h PART #mailroom");
      others.pop_front();
    }
  }
  void Drop(bool orderly) {
    joined = false;
    orderly ? peer->disconnectFromHost() : peer->abort();
  }
  void Answer(const std::string& line) {
    if (line.starts_with("USER")) Send(":s 001 me :hi\r\n:s 376 me :End");
    if (line.starts_with("PING ")) Send(":s PONG s " + line.substr(5));
    if (line.starts_with("JOIN")) SendRoom();
    ads += line.find("Check out") != std::string::npos ? 1 : 0;
    const std::string asks = " send Jane ";
    const size_t asked = line.find(asks);
    if (asked != std::string::npos) requests.insert(line.substr(asked + asks.size()));
  }
  void SendRoom() {
    std::string text = ":me!u@h JOIN :#mailroom\r\n:s 332 me #mailroom :Mails";
    for (size_t i = 0; i < others.size(); ++i) {
      text += (i % 40 == 0 ? "\r\n:s 353 me = #mailroom :" : " ") + others[i];
    }
    Send(text + "\r\n:s 353 me = #mailroom :me\r\n:s 366 me #mailroom :End");
    joined = true;
  }
  void Send(const std::string& line) { peer->write((line + "\r\n").c_str()); }

  std::unique_ptr<QTcpSocket> peer;
  std::deque<std::string> others;  // who is in the room besides the program
  int nextNick = 0;
  bool comes = false;
  bool joined = false;
  size_t ads = 0;
  std::multiset<std::string> requests;  // what was asked for
  std::mt19937 random{20261122};
};

}  // namespace brindle::soak
