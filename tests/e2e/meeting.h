#pragma once
// What the session tests share: the window in a session with a real IRC server or a scripted one.

#include <gtest/gtest.h>

#include <QHostAddress>
#include <QTcpServer>

#include "support/irc_server.h"
#include "support/raw_client.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {

using Texts = std::vector<std::string>;

constexpr const char* kRoom = "#mailroom";
inline const std::string kTo = "#mailroom :";
constexpr const char* kHint = "barStatusPanel2";
// Across a view.
inline const std::string kRule = "\n" + std::string(70, '-');

constexpr const char* kGone = "\nDisconnected...";

inline int Count(const std::string& text, const char* part) {
  return static_cast<int>(QString::fromStdString(text).count(part));
}

// Waits until the first session or attempt has ended and all of the window shows it, once;
// `trouble` is a part of what stands beside the button.
inline bool HasEnded(WindowDriver& window, const std::string& trouble) {
  const auto told = [&] {
    return Count(window.Room(), kGone) == 1 && Count(window.Status(), kGone) == 1;
  };
  if (!WaitUntil(told, 5000) || !window.Tells("lblConnectTrouble", trouble)) return false;
  LetTicksPass(3);  // what comes too much would have time to show
  return told() && window.Text("cmdConnect") == "Connect" &&
         window.Find<QWidget>("cmdConnect").isEnabled() &&
         window.Find<QWidget>("txtConnectNick").isEnabled() &&
         window.Text("barStatusPanel1") == "Status - Disconnected" &&
         window.App().CurrentSession().currentRoom.empty();
}

// Wanda at the window and a bot, in one room of a real server.
struct Meeting {
  void Begin(quint16 port, const QString& server = "127.0.0.1") {
    bot.Begin(port);
    ASSERT_TRUE(window.Register("Wanda", port, server));
    ASSERT_TRUE(bot.WaitForWelcome() && bot.Join(kRoom) && window.Join(0));
  }
  // What Wanda said, as the bot has received it, once it is so many lines.
  Texts Said(size_t lines) {
    WaitUntil([&] { return bot.SaidBy("Wanda").size() >= lines; });
    return bot.SaidBy("Wanda");
  }
  WindowDriver window{{kRoom, "#second"}};
  RawClient bot{"MailBot"};
};

// Says exactly the bytes it is told and keeps every byte it receives. It takes one connection at a
// time and understands nothing.
class ScriptedServer {
 public:
  ScriptedServer() {
    if (!listener_.listen(QHostAddress::LocalHost)) qFatal("there is no port to be had");
    QObject::connect(&listener_, &QTcpServer::newConnection, &listener_, [this] { Accept(); });
  }

  quint16 Port() const { return listener_.serverPort(); }

  // Sends at once, as a packet of its own.
  void Send(std::string_view bytes) {
    peer_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    peer_->flush();
  }

  // Waits until what was received since the last call ends in `end`, and returns all of it; what
  // there is when the time has run out.
  std::string TakeReceivedUpTo(std::string_view end) {
    WaitUntil([&] { return received_.ends_with(end); });
    return std::exchange(received_, {});
  }

  bool HasPeer() const { return peer_ != nullptr; }
  // All that came since the last Take.
  const std::string& Received() const { return received_; }

  // Ends the connection after what was sent.
  void Close() { peer_->disconnectFromHost(); }

 private:
  void Accept() {
    peer_.reset(listener_.nextPendingConnection());
    peer_->setParent(nullptr);
    peer_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    QObject::connect(peer_.get(), &QTcpSocket::readyRead, peer_.get(),
                     [this] { received_ += peer_->readAll().toStdString(); });
  }

  QTcpServer listener_;
  std::unique_ptr<QTcpSocket> peer_;
  std::string received_;
};

// "me" at the window, registered with a server that only says what it is told.
struct ScriptedSession {
  ScriptedSession() {
    window.Connect("me", "", server.Port());
    EXPECT_EQ(server.TakeReceivedUpTo("_0.5.85\r\n"),
              "NICK me\r\nUSER plenty of excellent qel_0.5.85\r\n");
    server.Send(":s 001 me :hi\r\n");
    EXPECT_TRUE(window.Tells("barStatusPanel1", "Status - Connected"));
  }
  ScriptedServer server;
  WindowDriver window{{kRoom}};
};

}  // namespace brindle::test
