#include "irc_server.h"

#include <pwd.h>
#include <unistd.h>

#include <QFile>
#include <QHostAddress>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QTcpSocket>

#include "child_process.h"
#include "wait.h"

namespace brindle::test {

namespace {

constexpr int kReadyTimeoutMs = 15000;
constexpr int kStopTimeoutMs = 5000;
constexpr int kConnectTimeoutMs = 2000;
constexpr int kAttempts = 5;

QString ProgramOf(IrcServer::Kind kind) {
  return kind == IrcServer::Kind::kNgircd ? "/usr/sbin/ngircd" : "/usr/sbin/inspircd";
}

// A port that was free a moment ago; 0 when none was found. It fits a signed number of 16 bits, as
// the program's list of IRC servers wants it.
quint16 FreePort() {
  constexpr int kLowest = 20000;
  constexpr int kBeyond = 32768;
  constexpr int kTries = 100;
  QTcpServer probe;
  for (int i = 0; i < kTries; ++i) {
    const int port = QRandomGenerator::system()->bounded(kLowest, kBeyond);
    if (probe.listen(QHostAddress::LocalHost, static_cast<quint16>(port)))
      return probe.serverPort();
  }
  return 0;
}

bool Accepts(quint16 port) {
  QTcpSocket probe;
  probe.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
  return probe.waitForConnected(kConnectTimeoutMs);
}

}  // namespace

bool IrcServer::IsRunning() const {
  return process_ != nullptr && process_->state() == QProcess::Running;
}

bool IrcServer::Start() {
  Kill();
  error_.clear();
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    // Another process may take a free port before the server does: then the next one is tried. A
    // port that the server had before is kept, since its users know it.
    const quint16 port = port_ != 0 ? port_ : FreePort();
    const Outcome outcome = StartOn(port);
    if (outcome == Outcome::kReady) {
      port_ = port;
      return true;
    }
    Kill();
    if (outcome == Outcome::kFailed) return false;
  }
  return false;
}

IrcServer::Outcome IrcServer::StartOn(quint16 port) {
  // Whom a server started by root goes on as must still be able to read these.
  const auto everyone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                        QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
  if (!folder_.isValid() || !QFile::setPermissions(folder_.path(), everyone) ||
      !WriteFile("motd.txt", "Be kind to the bots,\nthey do their best.\n") ||
      !WriteFile("server.conf", Configuration(port))) {
    return Failed("cannot write the configuration to " + folder_.path());
  }

  process_ = std::make_unique<QProcess>();
  process_->setStandardInputFile(QProcess::nullDevice());
  process_->setProcessChannelMode(QProcess::MergedChannels);
  process_->setStandardOutputFile(PathOf("log.txt"), QIODevice::Truncate);
  // ngIRCd started by root would become another user itself, and outlive a test that crashes.
  const passwd* nobody = geteuid() == 0 ? getpwnam("nobody") : nullptr;
  process_->setChildProcessModifier([nobody] {
    if (nobody != nullptr && (setgid(nobody->pw_gid) != 0 || setuid(nobody->pw_uid) != 0)) _exit(1);
    EndWithParent();
  });

  QStringList arguments = {"--nodaemon"};
  if (kind_ == Kind::kInspircd) arguments = {"--nofork", "--nolog", "--nopid"};
  process_->start(ProgramOf(kind_), arguments << "--config" << PathOf("server.conf"));
  if (!process_->waitForStarted()) return Failed(process_->errorString());
  if (WaitUntilReady() != Outcome::kReady) return Outcome::kPortTaken;
  if (!Accepts(port)) return Failed("it runs but does not accept connections");
  return Outcome::kReady;
}

// The server's own words decide: a connection alone could have reached another process that took
// the port first.
IrcServer::Outcome IrcServer::WaitUntilReady() {
  const QString ready = kind_ == Kind::kNgircd ? " ready.\n" : "is now running as";
  QString log;
  WaitUntil(
      [&] {
        const bool ended = !IsRunning();
        log = Log();
        return ended || log.contains(ready);
      },
      kReadyTimeoutMs);
  if (log.contains("Address already in use")) {
    error_ = "the port was taken";
    return Outcome::kPortTaken;
  }
  if (!IsRunning() || !log.contains(ready)) return Failed("it did not become ready");
  return Outcome::kReady;
}

IrcServer::Outcome IrcServer::Failed(const QString& why) {
  error_ = ProgramOf(kind_) + ": " + why + "\n" + Log();
  return Outcome::kFailed;
}

bool IrcServer::Stop() {
  if (!IsRunning()) return true;
  process_->terminate();
  const bool ended = WaitUntil([this] { return !IsRunning(); }, kStopTimeoutMs);
  Kill();
  return ended;
}

void IrcServer::Kill() {
  if (process_ == nullptr) return;
  if (process_->state() != QProcess::NotRunning) {
    process_->kill();
    process_->waitForFinished(kStopTimeoutMs);
  }
  process_.reset();
}

QString IrcServer::Log() const {
  QFile file(PathOf("log.txt"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll());
}

bool IrcServer::WriteFile(const QString& name, const QString& text) {
  QFile file(PathOf(name));
  const QByteArray bytes = text.toUtf8();
  return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
         file.write(bytes) == bytes.size() && file.flush() &&
         file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                             QFile::ReadOther);
}

QString IrcServer::Configuration(quint16 port) const {
  const char* ngircd = R"([Global]
Name = irc.brindle.test
Network = BrindleTest
Info = Test server
Listen = 127.0.0.1
Ports = %1
MotdFile = %2/motd.txt
AdminInfo1 = Test server
AdminEMail = test@brindle.test
[Limits]
ConnectRetry = 3600
MaxConnections = 0
MaxConnectionsIP = 0
MaxJoins = 0
MaxNickLength = 30
MaxPenaltyTime = 0
[Options]
DNS = no
Ident = no
PAM = no
)";
  const char* inspircd = R"(<path configdir="%2" datadir="%2" logdir="%2" runtimedir="%2">
<server name="irc.brindle.test" description="Test server" network="BrindleTest">
<admin name="Test server" nick="tester" email="test@brindle.test">
<bind address="127.0.0.1" port="%1" type="clients">
<connect name="tests" allow="*" timeout="60" pingfreq="120" maxchans="1000"
         localmax="10000" globalmax="10000" maxconnwarn="no" resolvehostnames="no" useident="no"
         hardsendq="16M" softsendq="4M" recvq="4M" threshold="1000000" commandrate="1000000"
         fakelag="no">
<files motd="%2/motd.txt">
<options prefixquit="Quit: ">
)";
  const QString form = kind_ == Kind::kNgircd ? ngircd : inspircd;
  return form.arg(QString::number(port), folder_.path());
}

}  // namespace brindle::test
