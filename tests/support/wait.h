#pragma once
// Waiting for a condition while the event loop runs: what tests use in place of sleeping.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

namespace brindle::test {

constexpr int kTimeoutMs = 10000;  // as patient as a busy machine needs

// Lets events run until `condition` holds; false when it still does not after `timeoutMs`
// milliseconds. The condition is looked at after every batch of events, at least every few
// milliseconds. REQUIRES: a QCoreApplication exists.
template <typename Condition>
bool WaitUntil(Condition condition, int timeoutMs = kTimeoutMs) {
  QElapsedTimer waited;
  waited.start();
  QTimer waker;
  waker.start(3);
  while (!condition()) {
    if (waited.hasExpired(timeoutMs)) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    // Objects deleted later go only when a loop of their own level runs; here there is none.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

}  // namespace brindle::test
