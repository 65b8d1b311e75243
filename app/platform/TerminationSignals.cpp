#include "app/platform/TerminationSignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tallyview {

namespace {

int writeEnd = -1;
void (*lastAct)() = nullptr;

void handle(int signal, void (*handler)(int), int flags) {
    struct sigaction ours {};
    ours.sa_handler = handler;
    ours.sa_flags = flags;
    sigaction(signal, &ours, nullptr);
}

/// A signal handler, for the second one; where the last act takes too long, the third one ends it.
void end(int signal) {
    if (lastAct != nullptr) {
        lastAct();
    }
    raise(signal);
}

/// A signal handler, so it may do no more than this.
void wakeMainThread(int signal) {
    const int error = errno;
    handle(signal, end, SA_NODEFER | static_cast<int>(SA_RESETHAND));
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = error;
}

bool isIgnored(int signal) {
    struct sigaction present {};
    sigaction(signal, nullptr, &present);
    return present.sa_handler == SIG_IGN;
}

} // namespace

TerminationSignals::TerminationSignals(void (*act)()) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals then end the process as they always do
    }
    writeEnd = ends[1];
    lastAct = act;
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, readEnd = ends[0]] {
        char byte = 0;
        while (::read(readEnd, &byte, 1) > 0) {
        }
        emit received();
    });
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        if (!isIgnored(signal)) {
            handle(signal, wakeMainThread, SA_RESTART);
        }
    }
}

} // namespace tallyview
