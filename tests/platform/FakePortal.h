#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QMap>

namespace tallyview::test {

/// The desktop portal's settings, on a bus connection of their own.
class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    using Settings = QMap<std::pair<QString, QString>, QVariant>;

    explicit FakePortal(Settings settings = {}) : m_settings(std::move(settings)) {
        m_bus.registerObject("/org/freedesktop/portal/desktop", this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService("org.freedesktop.portal.Desktop");
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus("portal"); }

    void set(const QString &group, const QString &key, const QVariant &value) {
        m_settings.insert({group, key}, value);
        emit SettingChanged(group, key, QDBusVariant(value));
    }

    /// From now on it hears questions and answers none.
    void fallSilent() { m_silent = true; }

    Q_SLOT QDBusVariant Read(const QString &group, const QString &key) {
        setDelayedReply(m_silent);
        const QVariant value = m_settings.value({group, key});
        if (!value.isValid() && !m_silent) {
            sendErrorReply("org.freedesktop.portal.Error.NotFound", "Requested setting not found");
            return {};
        }
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }

signals:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
    Settings m_settings;
    bool m_silent = false;
};

} // namespace tallyview::test
