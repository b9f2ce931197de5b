#include "irc_server.h"

#include <pwd.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QTcpSocket>
#include <utility>

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

QStringList IrcServer::MotdLines() {
  return {"Welcome to the test network.", "Be kind to the bots,", "they do their best."};
}

bool IrcServer::IsInstalled(Kind kind) { return QFileInfo(ProgramOf(kind)).isExecutable(); }

IrcServer::IrcServer(Kind kind, Bans bans) : kind_(kind), bans_(std::move(bans)) {}

IrcServer::~IrcServer() { Kill(); }

bool IrcServer::IsRunning() const {
  return process_ != nullptr && process_->state() == QProcess::Running;
}

bool IrcServer::Start() {
  Kill();
  error_.clear();
  if (kind_ == Kind::kNgircd && !(bans_.nicks.isEmpty() && bans_.users.isEmpty())) {
    error_ = "ngIRCd takes no bans from its configuration";
    return false;
  }
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
      !WriteFile("motd.txt", MotdLines().join('\n') + '\n') ||
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

  QStringList arguments;
  if (kind_ == Kind::kNgircd) {
    arguments << "--nodaemon"
              << "--config" << PathOf("server.conf");
  } else {
    arguments << "--nofork"
              << "--nolog"
              << "--nopid"
              << "--config" << PathOf("server.conf");
  }
  process_->start(ProgramOf(kind_), arguments);
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
  return kind_ == Kind::kNgircd ? NgircdConfiguration(port) : InspircdConfiguration(port);
}

QString IrcServer::NgircdConfiguration(quint16 port) const {
  return QString(R"([Global]
Name = %1
Network = %2
Info = Test server
Listen = 127.0.0.1
Ports = %3
MotdFile = %4
AdminInfo1 = Test server
AdminEMail = test@%1
[Limits]
ConnectRetry = 3600
MaxConnections = 0
MaxConnectionsIP = 0
MaxJoins = 0
MaxNickLength = 30
MaxPenaltyTime = 0
PingTimeout = %7
PongTimeout = 60
[Options]
DNS = no
Ident = no
PAM = no
OperCanUseMode = yes
[Operator]
Name = %5
Password = %6
)")
      .arg(kServerName, kNetwork, QString::number(port), PathOf("motd.txt"), kOperatorName,
           kOperatorPassword, QString::number(pingSeconds_));
}

QString IrcServer::InspircdConfiguration(quint16 port) const {
  QString text = QString(R"(<path configdir="%4" datadir="%4" logdir="%4" runtimedir="%4">
<server name="%1" description="Test server" network="%2">
<admin name="Test server" nick="tester" email="test@%1">
<bind address="127.0.0.1" port="%3" type="clients">
<connect name="tests" allow="*" timeout="60" pingfreq="%7" maxchans="1000"
         localmax="10000" globalmax="10000" maxconnwarn="no" resolvehostnames="no" useident="no"
         hardsendq="16M" softsendq="4M" recvq="4M" threshold="1000000" commandrate="1000000"
         fakelag="no">
<class name="Everything" commands="*" usermodes="*" chanmodes="*" privs="*" snomasks="*">
<type name="Operator" classes="Everything">
<oper name="%5" password="%6" host="*@*" type="Operator">
<files motd="%4/motd.txt">
<options prefixquit="Quit: ">
)")
                     .arg(kServerName, kNetwork, QString::number(port), folder_.path(),
                          kOperatorName, kOperatorPassword, QString::number(pingSeconds_));
  for (const QString& nick : bans_.nicks) {
    text += QString("<badnick nick=\"%1\" reason=\"Not wanted here\">\n").arg(nick);
  }
  for (const QString& user : bans_.users) {
    text += QString("<badhost host=\"%1\" reason=\"Not wanted here\">\n").arg(user);
  }
  return text;
}

}  // namespace brindle::test
