#include "platform/single_instance_qt.h"

#include <QDir>

namespace brindle {

SingleInstance::SingleInstance(const std::string& folder)
    : lock_(QDir(QString::fromStdString(folder)).filePath("brindle.lock")) {
  // Age alone does not make a lock stale: the program may run for weeks.
  lock_.setStaleLockTime(0);
  another_ = !lock_.tryLock(0) && lock_.error() == QLockFile::LockFailedError;
}

}  // namespace brindle
