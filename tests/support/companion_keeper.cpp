#include <QHostAddress>
#include <QTcpSocket>

#include "companion.h"
#include "wait.h"

namespace brindle::test {

// A connection to the keeper is one companion, and its first line the command: "nobody" or "same",
// the program, its arguments, with tabs between. What comes back is the output. The companion goes
// with the connection.
struct Companion::Process : QTcpSocket {
  User user;
};

Companion::Companion(User user) : process_(std::make_unique<Process>()) { process_->user = user; }

Companion::~Companion() { Kill(); }

void Companion::Start(const QString& program, const QStringList& arguments) {
  const bool isOther = process_->user == User::kNobodyForRoot;
  QStringList words = {isOther ? "nobody" : "same", PathForCompanions(program)};
  for (const QString& argument : arguments) words << PathForCompanions(argument);
  const quint16 port = qEnvironmentVariable("BRINDLE_KEEPER").toUShort();
  process_->connectToHost(QHostAddress::LocalHost, port);
  process_->waitForConnected(kTimeoutMs);
  process_->write(words.join('\t').toUtf8() + '\n');
}

bool Companion::IsRunning() const { return process_->state() != QTcpSocket::UnconnectedState; }

QByteArray Companion::TakeOutput() { return process_->readAll(); }

QString Companion::Error() const { return process_->errorString(); }

void Companion::Terminate() { process_->write("end\n"); }

void Companion::Kill() {
  if (!IsRunning()) return;
  process_->write("kill\n");
  if (!process_->waitForDisconnected(kTimeoutMs)) process_->abort();
}

// Wine shows the root of Linux as a drive.
QString PathForCompanions(const QString& path) {
  return path.startsWith("Z:", Qt::CaseInsensitive) ? path.mid(2) : path;
}

}  // namespace brindle::test
