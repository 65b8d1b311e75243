#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace tallyview {

/// A notification daemon on a bus connection of its own, from construction to destruction.
class FakeNotificationDaemon : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Notice {
        QString applicationName;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int expiry;
    };
    enum class Mood { willing, failing, hanging };

    explicit FakeNotificationDaemon(QStringList capabilities = {"actions", "body", "body-markup"})
        : m_capabilities(std::move(capabilities)) {
        m_bus.registerObject("/org/freedesktop/Notifications", this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService("org.freedesktop.Notifications");
    }
    ~FakeNotificationDaemon() override { QDBusConnection::disconnectFromBus("daemon"); }

    /// What a user does; ids count from 1.
    void click(uint id, const QString &token = {}) {
        if (!token.isEmpty()) {
            emit ActivationToken(id, token);
        }
        emit ActionInvoked(id, "default");
    }
    /// Answers the calls left hanging, as if now done.
    void wakeUp() {
        mood = Mood::willing;
        for (const QDBusMessage &call : std::exchange(m_hanging, {})) {
            m_bus.send(call.member() == "Notify" ? call.createReply(uint(notices.size()))
                                                 : call.createReply(m_capabilities));
        }
    }

    Mood mood = Mood::willing;
    bool hangsAtOnce = false; ///< hanging begins with the capabilities
    QList<Notice> notices;
    QList<uint> closed;

    Q_SLOT QStringList GetCapabilities() {
        if (mood == Mood::hanging && hangsAtOnce) {
            hang();
        }
        return m_capabilities;
    }
    Q_SLOT uint Notify(const QString &applicationName, uint, const QString &,
                       const QString &summary, const QString &body, const QStringList &actions,
                       const QVariantMap &hints, int expiry) {
        if (mood == Mood::failing) {
            sendErrorReply("org.example.Full", "The screen is full");
            return 0;
        }
        notices.append({applicationName, summary, body, actions, hints, expiry});
        if (mood == Mood::hanging) {
            hang();
        }
        return uint(notices.size());
    }
    Q_SLOT void CloseNotification(uint id) { closed.append(id); }

signals:
    void ActionInvoked(uint id, const QString &action);
    void ActivationToken(uint id, const QString &token);

private:
    void hang() {
        setDelayedReply(true);
        m_hanging.append(message());
    }

    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "daemon");
    QStringList m_capabilities;
    QList<QDBusMessage> m_hanging;
};

} // namespace tallyview
