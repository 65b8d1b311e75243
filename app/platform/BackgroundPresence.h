#pragma once

#include <QObject>

namespace tallyview {

/// Where the desktop shows a process that has no window. Live; main thread.
class BackgroundPresence : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// There is a tray, in which programs place an item of their own. False until the desktop has
    /// answered.
    virtual bool hasTray() const = 0;

    /// Where the desktop lists what runs without a window, says there what this process does, in
    /// at most 96 characters. The caller is not told whether it does.
    virtual void describe(const QString &message) = 0;

signals:
    void hasTrayChanged();
};

} // namespace tallyview
