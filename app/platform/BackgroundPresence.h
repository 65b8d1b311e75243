#pragma once

#include <QObject>

namespace tallyview {

/// Where the desktop shows a process that has no window. Live; main thread.
class BackgroundPresence : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether there is a tray in which programs place items of their own. False until the desktop
    /// has answered.
    virtual bool hasTray() const = 0;

    /// If the desktop lists what runs without a window, says there in at most 96 characters what
    /// this process does. The caller is not told whether it does list it.
    virtual void describe(const QString &message) = 0;

signals:
    void hasTrayChanged();
};

} // namespace tallyview
