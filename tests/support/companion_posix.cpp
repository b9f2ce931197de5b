#include <pwd.h>
#include <unistd.h>

#include "child_process.h"
#include "companion.h"
#include "wait.h"

namespace brindle::test {

struct Companion::Process : QProcess {};

Companion::Companion(User user) : process_(std::make_unique<Process>()) {
  process_->setProcessChannelMode(QProcess::MergedChannels);
  const bool isOther = user == User::kNobodyForRoot && geteuid() == 0;
  const passwd* nobody = isOther ? getpwnam("nobody") : nullptr;
  process_->setChildProcessModifier([nobody] {
    if (nobody != nullptr && (setgid(nobody->pw_gid) != 0 || setuid(nobody->pw_uid) != 0)) _exit(1);
    EndWithParent();
  });
}

Companion::~Companion() { Kill(); }

void Companion::Start(const QString& program, const QStringList& arguments) {
  process_->start(program, arguments);
}

bool Companion::IsRunning() const { return process_->state() != QProcess::NotRunning; }

QByteArray Companion::TakeOutput() { return process_->readAll(); }

QString Companion::Error() const { return process_->errorString(); }

void Companion::Terminate() { process_->terminate(); }

void Companion::Kill() {
  process_->kill();
  process_->waitForFinished(kTimeoutMs);
}

QString PathForCompanions(const QString& path) { return path; }

}  // namespace brindle::test
