#pragma once

#include "core/ThreadRecord.h"

#include <QObject>

#include <functional>

namespace tallyview {

class NotificationCenter;
struct NotificationActivation;
struct NotificationRequest;
class UrlOpener;
class UserDefaults;

/// Tells the user of completed tasks, and opens a task whose notice is clicked.
///
/// Main thread. What the notification centre answers is kept in the user defaults for diagnosis,
/// and shown to nobody:
///
///     notificationAuthorizationGranted  boolean  whether permission was granted
///     notificationAuthorizationError    text     why not; empty without an error
///     notificationAuthorizationStatus   integer  value of NotificationAuthorization
///     notificationDeliveryError         text     of the last attempt; empty on success
///     notificationLastDeliveryAttempt   date     when the outcome of the last attempt was known
class TaskNotificationService : public QObject {
    Q_OBJECT

public:
    using Clock = std::function<Instant()>;

    /// The centre, the defaults and the opener outlive the service.
    TaskNotificationService(NotificationCenter &center, UserDefaults &defaults, UrlOpener &opener,
                            Clock clock, QObject *parent = nullptr);

    /// Takes clicks from now on, asks for permission and, without waiting for the answer, for the
    /// current settings. Called once, when the application has started.
    void configure();

    /// Posts the notice that `thread` has completed. Each call posts another notice.
    void notifyCompletion(const ThreadRecord &thread);

    /// Posts a notice that tells the user that notices work. A click on it opens nothing.
    void sendTestNotification();

private:
    void add(const NotificationRequest &request);
    void recordDelivery(const QString &error);
    void openThread(const NotificationActivation &activation);

    NotificationCenter &m_center;
    UserDefaults &m_defaults;
    UrlOpener &m_opener;
    Clock m_clock;
};

} // namespace tallyview
