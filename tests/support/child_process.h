#pragma once
// Processes that do not outlive the one that started them, however that one ends.

#include <signal.h>
#include <sys/prctl.h>

#include <QProcess>

namespace brindle::test {

// For the child itself, once it has become the user that it is going to be.
inline void EndWithParent() { prctl(PR_SET_PDEATHSIG, SIGKILL); }

// Before `child` is started.
inline void LetEndWithParent(QProcess& child) {
  child.setChildProcessModifier([] { EndWithParent(); });
}

}  // namespace brindle::test
