#pragma once

#include "app/platform/BackgroundPresence.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

namespace tallyview {

/// Finds the tray by the service where items register, `org.kde.StatusNotifierWatcher`, which may
/// come and go, and the list by the portal's background status, which portals grant only to
/// programs in a sandbox.
class FreedesktopBackgroundPresence : public BackgroundPresence {
    Q_OBJECT

public:
    explicit FreedesktopBackgroundPresence(
        const QDBusConnection &bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    bool hasTray() const override { return m_hasTray; }
    void describe(const QString &message) override;

private:
    void askForTray();
    void setHasTray(bool hasTray);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_trayWatcher;
    bool m_hasTray = false;
};

} // namespace tallyview
