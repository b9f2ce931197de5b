#include "platform/clock_qt.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QTimer>

namespace brindle {

std::tm QtClock::LocalTime() const {
  // Asking for the time zone looks at a file, which is too much for each of a thousand chat lines.
  const qint64 second = QDateTime::currentSecsSinceEpoch();
  if (second == second_) return localTime_;
  const QDateTime now = QDateTime::fromSecsSinceEpoch(second);
  std::tm time{};
  time.tm_year = now.date().year() - 1900;
  time.tm_mon = now.date().month() - 1;
  time.tm_mday = now.date().day();
  time.tm_hour = now.time().hour();
  time.tm_min = now.time().minute();
  time.tm_sec = now.time().second();
  second_ = second;
  localTime_ = time;
  return time;
}

void QtEventPump::LetEventsRun(int atMost) {
  if (atMost <= 0) {
    QCoreApplication::processEvents();
    return;
  }
  QEventLoop loop;
  QTimer::singleShot(atMost, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace brindle
