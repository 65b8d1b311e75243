#pragma once

#include <QObject>

namespace tallyview {

/// Reports the signals that ask the process to end: the session ends (SIGTERM), the terminal closes
/// (SIGHUP), or Control-C is pressed there (SIGINT). A signal that the process was started to
/// ignore stays ignored; the second one of a kind ends the process at once, after `lastAct`, which
/// may do only what a signal handler may. At most one object in a process, to be kept until it
/// ends. Main thread.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(void (*lastAct)() = nullptr);

signals:
    void received();
};

} // namespace tallyview
