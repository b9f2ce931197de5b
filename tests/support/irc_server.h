#pragma once
// A real IRC server on loopback: its own configuration in a temporary folder, its own free port,
// and an end with the object. Its limits are far above what any test does, and it looks nobody up.

#include <QString>
#include <QTemporaryDir>

#include "companion.h"

namespace brindle::test {

class IrcServer {
 public:
  enum class Kind { kNgircd, kInspircd };

  explicit IrcServer(Kind kind);

  // Returns once the server is ready, or false after a bounded time; Error() says why. A server
  // started again keeps its port.
  bool Start();
  QString Error() const;
  // 0 before the first successful Start.
  quint16 Port() const { return port_; }

  // Before Start: speaks TLS at another port too, with a new certificate of its own for 127.0.0.1.
  void UseTls();
  quint16 TlsPort() const { return tlsPort_; }
  QString CertificatePath() const { return folder_.filePath("cert.pem"); }
  QString KeyPath() const { return folder_.filePath("key.pem"); }

  // Ends the server at once; its connections just break.
  void Kill() { process_.Kill(); }

 private:
  enum class Outcome { kReady, kPortTaken, kFailed };
  Outcome StartOn(quint16 port);
  QString Configuration(quint16 port) const;

  const Kind kind_;
  QTemporaryDir folder_;
  // ngIRCd started by root would become another user itself, and outlive a test that crashes.
  Companion process_{Companion::User::kNobodyForRoot};
  quint16 port_ = 0;
  quint16 tlsPort_ = 0;
  QString log_;  // what the server has printed until it was ready
};

}  // namespace brindle::test
