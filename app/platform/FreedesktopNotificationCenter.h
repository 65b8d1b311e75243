#pragma once

#include "app/platform/NotificationCenter.h"

#include <QDBusConnection>
#include <QList>

#include <chrono>
#include <expected>
#include <functional>

class QDBusMessage;

namespace tallyview {

/// Notices through the desktop's notification daemon, `org.freedesktop.Notifications`.
///
/// The daemon sends clicks only to the connection that posted the notice, so the centre keeps one
/// of its own open; if the bus was missing or broke, the next call reconnects. A daemon that
/// answers counts as permission. If it is missing, fails or is slower than `patience`, the answer
/// is its error text. Each call looks for the daemon afresh, so one that starts later is used, and
/// if one is replaced before it has shown a notice, its successor shows it.
class FreedesktopNotificationCenter : public NotificationCenter {
    Q_OBJECT

public:
    explicit FreedesktopNotificationCenter(
        std::chrono::milliseconds patience = std::chrono::seconds(10), QObject *parent = nullptr);
    ~FreedesktopNotificationCenter() override;

    void requestAuthorization(AuthorizationAnswer answer) override;
    void readAuthorization(StatusAnswer answer) override;
    /// The subtitle and the body become two lines of the notice's body, the click its default
    /// action.
    void add(const NotificationRequest &request, DeliveryOutcome outcome) override;
    /// Closes the notice.
    void acknowledge(const QString &identifier) override;

private:
    /// A notice on the screen or in the daemon's history.
    struct Notice {
        QString daemon; ///< unique bus name: each daemon has ids of its own
        uint id = 0;
        NotificationActivation activation;
    };
    using Reply = std::function<void(const QDBusMessage &reply)>;
    using Daemon = std::expected<QString, QString>; ///< unique bus name, or why there is none
    using Found = std::function<void(const Daemon &daemon)>;

    Q_SLOT void activationTokenReceived(uint id, const QString &token, const QDBusMessage &signal);
    Q_SLOT void actionInvoked(uint id, const QString &action, const QDBusMessage &signal);

    QDBusConnection bus();
    void call(const QDBusMessage &message, std::chrono::milliseconds patience, Reply reply);
    void askDaemon(Reply reply);
    void findDaemon(Found found);
    void show(const QString &daemon, const NotificationRequest &request,
              const DeliveryOutcome &outcome);
    void showOnSuccessor(const QString &daemon, const NotificationRequest &request,
                         const QString &error, const DeliveryOutcome &outcome);
    void notify(const QString &daemon, const NotificationRequest &request,
                const QStringList &capabilities, const DeliveryOutcome &outcome);
    void remember(const NotificationRequest &request, const QString &daemon, uint id);
    QList<Notice>::iterator find(const QString &daemon, uint id);

    std::chrono::milliseconds m_patience;
    QString m_connectionName;
    QList<Notice> m_shown; ///< oldest first
    QList<Notice> m_activated;
};

} // namespace tallyview
