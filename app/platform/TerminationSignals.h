#pragma once

#include <QObject>

namespace tallyview {

/// The wish, by signal, that the process end: the session that ends (SIGTERM), the terminal that
/// closes (SIGHUP) or Control-C there (SIGINT). A signal that the process was started to ignore
/// stays ignored; the second one of a kind ends the process at once. At most one object in a
/// process, to be kept until it ends. Main thread.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);

signals:
    void received();
};

} // namespace tallyview
