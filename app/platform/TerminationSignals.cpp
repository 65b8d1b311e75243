#include "app/platform/TerminationSignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tallyview {

namespace {

int writeEnd = -1;

/// A signal handler, so it may do no more than this.
void wakeMainThread(int) {
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = error;
}

void handle(int signal) {
    struct sigaction present {};
    sigaction(signal, nullptr, &present);
    if (present.sa_handler == SIG_IGN) {
        return;
    }
    struct sigaction ours {};
    ours.sa_handler = wakeMainThread;
    ours.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigaction(signal, &ours, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent) : QObject(parent) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals then end the process as they always do
    }
    writeEnd = ends[1];
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, readEnd = ends[0]] {
        char byte = 0;
        while (::read(readEnd, &byte, 1) > 0) {
        }
        emit received();
    });
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        handle(signal);
    }
}

} // namespace tallyview
