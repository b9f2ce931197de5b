#pragma once
// A real IRC server on loopback for one test: its own configuration in a temporary folder, its own
// free port, and an end with the object. Its limits are far above what any test does, and it looks
// nobody up.

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace brindle::test {

class IrcServer {
 public:
  enum class Kind { kNgircd, kInspircd };

  // Bans that hold from the start, InspIRCd only: ngIRCd knows none in its configuration, and
  // Start fails when given any. An operator can ban on both (KLINE).
  struct Bans {
    QStringList nicks;  // masks; such a nick is refused with 432
    QStringList users;  // "user@host" masks; such a user is sent away with 465 when registering
  };

  static constexpr const char* kServerName = "irc.brindle.test";
  static constexpr const char* kNetwork = "BrindleTest";
  static constexpr const char* kOperatorName = "tester";
  static constexpr const char* kOperatorPassword = "sesame";
  static QStringList MotdLines();

  static bool IsInstalled(Kind kind);

  explicit IrcServer(Kind kind, Bans bans = {});
  // Kills a server that still runs.
  ~IrcServer();
  IrcServer(const IrcServer&) = delete;
  IrcServer& operator=(const IrcServer&) = delete;

  // How long a user may be silent before the server sends a PING. ngIRCd knows no less than 5.
  // Holds from the next Start.
  void SetPingSeconds(int seconds) { pingSeconds_ = seconds; }

  // Returns once the server accepts connections, or false after a bounded time; Error() says why.
  // A server started again keeps its port.
  bool Start();
  const QString& Error() const { return error_; }

  // 0 before the first successful Start.
  quint16 Port() const { return port_; }
  bool IsRunning() const;

  // Asks the server to end, so that it says goodbye to its users, and waits until it has. False
  // when it had to be killed.
  bool Stop();
  // Ends the server at once; its connections just break.
  void Kill();

  // What the server has printed since its last start.
  QString Log() const;

 private:
  enum class Outcome { kReady, kPortTaken, kFailed };
  Outcome StartOn(quint16 port);
  Outcome WaitUntilReady();
  QString Configuration(quint16 port) const;
  QString NgircdConfiguration(quint16 port) const;
  QString InspircdConfiguration(quint16 port) const;
  bool WriteFile(const QString& name, const QString& text);
  QString PathOf(const QString& name) const { return folder_.filePath(name); }
  Outcome Failed(const QString& why);

  Kind kind_;
  Bans bans_;
  int pingSeconds_ = 120;
  QTemporaryDir folder_;
  std::unique_ptr<QProcess> process_;
  quint16 port_ = 0;
  QString error_;
};

}  // namespace brindle::test
