#include "desktop/end_by_signal.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>
#include <utility>

#include <sys/socket.h>
#include <unistd.h>
#endif

namespace pelorin::desktop {

#ifdef Q_OS_UNIX
namespace {

/// A signal handler may do next to nothing: it writes one byte, which the message loop reads.
int signalPipe[2] = {-1, -1};

void TellOfSignal(int) {
  const char byte = 1;
  [[maybe_unused]] const ssize_t written = ::write(signalPipe[0], &byte, sizeof byte);
}

}  // namespace

void EndBySignal(std::function<void()> end) {
  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0) return;
  auto* notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, QCoreApplication::instance());
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, end = std::move(end)] {
    notifier->setEnabled(false);
    end();
  });
  struct sigaction action = {};
  action.sa_handler = TellOfSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(number, &action, nullptr);
}
#else
void EndBySignal(std::function<void()>) {}
#endif

}  // namespace pelorin::desktop
