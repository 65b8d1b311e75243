#include "app/platform/FreedesktopBackgroundPresence.h"

#include "app/platform/BusCall.h"
#include "app/platform/SettingsPortal.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace tallyview {

namespace {

const QString trayService = QStringLiteral("org.kde.StatusNotifierWatcher");

} // namespace

FreedesktopBackgroundPresence::FreedesktopBackgroundPresence(const QDBusConnection &bus,
                                                             QObject *parent)
    : BackgroundPresence(parent)
    , m_bus(bus)
    , m_trayWatcher(trayService, bus) {
    connect(&m_trayWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                setHasTray(!newOwner.isEmpty());
            });
    askForTray();
}

/// Nobody waits for the reply: an old portal does not know the call, and any refuses it to a
/// program outside a sandbox.
void FreedesktopBackgroundPresence::describe(const QString &message) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        SettingsPortal::service, SettingsPortal::path,
        QStringLiteral("org.freedesktop.portal.Background"), QStringLiteral("SetStatus"));
    call.setArguments({QVariantMap{{QStringLiteral("message"), message}}});
    m_bus.send(call);
}

void FreedesktopBackgroundPresence::askForTray() {
    const QDBusMessage call = busCall(QStringLiteral("NameHasOwner"), {trayService});
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<bool> reply = *watcher;
        watcher->deleteLater();
        setHasTray(!reply.isError() && reply.value());
    });
}

void FreedesktopBackgroundPresence::setHasTray(bool hasTray) {
    if (std::exchange(m_hasTray, hasTray) != hasTray) {
        emit hasTrayChanged();
    }
}

} // namespace tallyview
