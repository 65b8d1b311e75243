#pragma once

#include "app/platform/ApplicationInstance.h"

#include <QDBusConnection>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <chrono>

class QDeadlineTimer;

namespace tallyview {

/// One process per session: the primary owns a name on the session bus, `org.orvik.Tallyview`,
/// while the connection lasts, and hears of further starts over `org.freedesktop.Application`.
/// Without a bus every process is the primary.
class FreedesktopInstance : public ApplicationInstance {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `patience` bounds claim().
    explicit FreedesktopInstance(const QDBusConnection &bus = QDBusConnection::sessionBus(),
                                 std::chrono::milliseconds patience = std::chrono::seconds(5),
                                 QObject *parent = nullptr);

    /// Gives the name back at once: the process may live on until its reading has ended, and one
    /// started in the meantime takes its place.
    ~FreedesktopInstance() override;

    std::expected<Role, QString> claim(const std::optional<QString> &activationToken) override;

    /// The activation token that the launcher gave this process, or an empty text. Read it before
    /// making the QGuiApplication, which clears some of the variables it comes from.
    static QString environmentToken();

    // The interface on the bus, which has to be public. There are no documents to open and no
    // actions, so those calls just show the window.
    Q_SCRIPTABLE Q_SLOT void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE Q_SLOT void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE Q_SLOT void ActivateAction(const QString &action, const QVariantList &parameters,
                                            const QVariantMap &platformData);

private:
    bool takeName(const QDeadlineTimer &deadline);

    QDBusConnection m_bus;
    std::chrono::milliseconds m_patience;
};

} // namespace tallyview
