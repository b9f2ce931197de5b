#include "irc_server.h"

#include <QFile>
#include <QHostAddress>
#include <QRandomGenerator>
#include <QTcpServer>

#include "wait.h"

namespace brindle::test {

namespace {

// A port that was free a moment ago. It fits a signed number of 16 bits, as the program's list of
// IRC servers wants it.
quint16 FreePort() {
  QTcpServer probe;
  while (!probe.listen(QHostAddress::LocalHost,
                       static_cast<quint16>(QRandomGenerator::system()->bounded(20000, 32768)))) {
  }
  return probe.serverPort();
}

// Readable by everyone.
void Write(const QString& path, const QString& text) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 ||
      !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther)) {
    qFatal("cannot write %s", qPrintable(path));
  }
}

}  // namespace

IrcServer::IrcServer(Kind kind) : kind_(kind) {
  QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                            QFile::ReadOther | QFile::ExeOther);
  Write(folder_.filePath("motd.txt"), "Be kind to the bots,\nthey do their best.\n");
}

void IrcServer::UseTls() {
  Companion openssl(Companion::User::kSame);
  const QString folder = PathForCompanions(folder_.path());
  openssl.Start(
      "/usr/bin/openssl",
      {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
       "-days", "2", "-subj", "/CN=irc.brindle.test", "-addext", "subjectAltName=IP:127.0.0.1",
       "-keyout", folder + "/key.pem", "-out", folder + "/cert.pem"});
  WaitUntil([&] { return !openssl.IsRunning(); }, kTimeoutMs);
  for (const char* name : {"key.pem", "cert.pem"}) {
    QFile::setPermissions(folder_.filePath(name),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
  }
  if (tlsPort_ == 0) tlsPort_ = FreePort();
}

bool IrcServer::Start() {
  // Another process may take a free port before the server does: then the next one is tried. A port
  // that the server had before is kept, since its users know it.
  Outcome outcome = Outcome::kPortTaken;
  for (int attempt = 0; attempt < 5 && outcome == Outcome::kPortTaken; ++attempt) {
    Kill();
    const quint16 port = port_ != 0 ? port_ : FreePort();
    outcome = StartOn(port);
    if (outcome == Outcome::kReady) port_ = port;
  }
  return outcome == Outcome::kReady;
}

// The server's own words decide: a connection alone could have reached another process that took
// the port first.
IrcServer::Outcome IrcServer::StartOn(quint16 port) {
  Write(folder_.filePath("server.conf"), Configuration(port));
  log_.clear();
  const QString configuration = PathForCompanions(folder_.filePath("server.conf"));
  if (kind_ == Kind::kNgircd) {
    process_.Start("/usr/sbin/ngircd", {"--nodaemon", "--config", configuration});
  } else {
    process_.Start("/usr/sbin/inspircd",
                   {"--nofork", "--nolog", "--nopid", "--config", configuration});
  }
  const char* ready = kind_ == Kind::kNgircd ? " ready.\n" : "is now running as";
  WaitUntil(
      [&] {
        const bool ended = !process_.IsRunning();
        log_ += process_.TakeOutput();
        return ended || log_.contains(ready);
      },
      kTimeoutMs);
  if (log_.contains("Address already in use")) return Outcome::kPortTaken;
  const bool runs = process_.IsRunning() && log_.contains(ready);
  return runs ? Outcome::kReady : Outcome::kFailed;
}

QString IrcServer::Error() const { return process_.Error() + "\n" + log_; }

QString IrcServer::Configuration(quint16 port) const {
  const char* ngircd = R"([Global]
Name = irc.brindle.test
Listen = 127.0.0.1,::1
Ports = %1
MotdFile = %2/motd.txt
[Limits]
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
<connect name="tests" allow="*" timeout="3600" pingfreq="7200" maxchans="1000"
         localmax="10000" globalmax="10000" maxconnwarn="no" resolvehostnames="no" useident="no"
         hardsendq="16M" softsendq="4M" recvq="4M" threshold="1000000" commandrate="1000000"
         fakelag="no">
<files motd="%2/motd.txt">
<options prefixquit="Quit: ">
<module name="cap"><module name="chghost"><module name="namesx">
<module name="ircv3"><module name="ircv3_accounttag"><module name="ircv3_batch">
<module name="ircv3_capnotify"><module name="ircv3_chghost"><module name="ircv3_ctctags">
<module name="ircv3_echomessage"><module name="ircv3_labeledresponse"><module name="ircv3_msgid">
<module name="ircv3_servertime"><module name="chanhistory">
<chanhistory maxlines="1000" prefixmsg="no">
)";
  QString form = kind_ == Kind::kNgircd ? ngircd : inspircd;
  if (tlsPort_ != 0) {
    const char* tls = kind_ == Kind::kNgircd
                          ? "[SSL]\nCertFile = %2/cert.pem\nKeyFile = %2/key.pem\nPorts = %3\n"
                          : R"(<module name="ssl_gnutls">
<sslprofile name="tls" provider="gnutls" certfile="%2/cert.pem" keyfile="%2/key.pem"
            hash="sha256">
<bind address="127.0.0.1" port="%3" type="clients" sslprofile="tls">
<module name="sslinfo"><sslinfo welcomemsg="yes">
)";
    form = QString(form + tls).replace("%3", QString::number(tlsPort_));
  }
  return form.arg(QString::number(port), PathForCompanions(folder_.path()));
}

}  // namespace brindle::test
