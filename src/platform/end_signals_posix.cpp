#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>
#include <utility>

#include "platform/end_signals.h"

namespace brindle {
namespace {

// A handler may do next to nothing, so it writes a byte here and the event loop does the rest.
int signalPipe[2] = {-1, -1};

extern "C" void NoteSignal(int) {
  const char byte = 1;
  // A full pipe means that the wish has been noted already.
  [[maybe_unused]] const ssize_t written = ::write(signalPipe[1], &byte, sizeof byte);
}

}  // namespace

void OnEndSignal(std::function<void()> end) {
  if (::pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* notifier =
      new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, QCoreApplication::instance());
  QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                   [notifier, end = std::move(end)] {
                     notifier->setEnabled(false);
                     end();
                   });
  struct sigaction action {};
  action.sa_handler = NoteSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(number, &action, nullptr);
}

}  // namespace brindle
