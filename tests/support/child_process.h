#pragma once
// Processes that do not outlive the one that started them, however that one ends; where the system
// has no such thing, they may.

#include <QProcess>

#ifdef Q_OS_LINUX
#include <signal.h>
#include <sys/prctl.h>
#endif

namespace brindle::test {

// For the child itself, once it has become the user that it is going to be.
inline void EndWithParent() {
#ifdef Q_OS_LINUX
  prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
}

// Before `child` is started.
inline void LetEndWithParent([[maybe_unused]] QProcess& child) {
#ifdef Q_OS_LINUX
  child.setChildProcessModifier([] { EndWithParent(); });
#endif
}

}  // namespace brindle::test
