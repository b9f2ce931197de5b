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

  explicit IrcServer(Kind kind) : kind_(kind) {}
  // Kills a server that still runs.
  ~IrcServer() { Kill(); }
  IrcServer(const IrcServer&) = delete;
  IrcServer& operator=(const IrcServer&) = delete;

  // Returns once the server accepts connections, or false after a bounded time; Error() says why.
  // A server started again keeps its port.
  bool Start();
  const QString& Error() const { return error_; }

  // 0 before the first successful Start.
  quint16 Port() const { return port_; }

  // Asks the server to end, so that it says goodbye to its users, and waits until it has. False
  // when it had to be killed.
  bool Stop();
  // Ends the server at once; its connections just break.
  void Kill();

 private:
  enum class Outcome { kReady, kPortTaken, kFailed };
  Outcome StartOn(quint16 port);
  Outcome WaitUntilReady();
  bool IsRunning() const;
  QString Configuration(quint16 port) const;
  bool WriteFile(const QString& name, const QString& text);
  QString PathOf(const QString& name) const { return folder_.filePath(name); }
  QString Log() const;
  Outcome Failed(const QString& why);

  Kind kind_;
  QTemporaryDir folder_;
  std::unique_ptr<QProcess> process_;
  quint16 port_ = 0;
  QString error_;
};

}  // namespace brindle::test
