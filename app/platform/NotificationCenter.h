#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>

namespace tallyview {

/// A notice to show at once. Texts are plain.
struct NotificationRequest {
    QString identifier; ///< unique among all requests
    QString title;
    QString subtitle; ///< may be empty
    QString body;
    QString actionLabel;       ///< what a click does, for desktops that show it; may be empty
    bool defaultSound = false; ///< play the desktop's sound for notices
    QString groupingKey;       ///< notices of one key belong together; may be empty
    QVariantMap userData;      ///< comes back with the user's click
};

/// The user clicked a notice.
struct NotificationActivation {
    QString identifier; ///< of the request
    QString groupingKey;
    QVariantMap userData;
    QString activationToken; ///< the desktop's permission to raise a window; may be empty
};

/// What the desktop lets the application show.
enum class NotificationAuthorization {
    notDetermined = 0,
    denied = 1,
    authorized = 2,
    provisional = 3,
    ephemeral = 4
};

/// The desktop's notification centre: shows notices, also while the application is in front.
///
/// Main thread. Every call returns at once; every answer comes later, on the main thread, exactly
/// once and within a bounded time, unless the centre is destroyed before.
class NotificationCenter : public QObject {
    Q_OBJECT

public:
    /// Errors are texts for people; empty when there was none.
    using AuthorizationAnswer = std::function<void(bool granted, const QString &error)>;
    using StatusAnswer = std::function<void(NotificationAuthorization status)>;
    using DeliveryOutcome = std::function<void(const QString &error)>;

    using QObject::QObject;

    /// Asks for permission to show notices with sound.
    virtual void requestAuthorization(AuthorizationAnswer answer) = 0;
    virtual void readAuthorization(StatusAnswer answer) = 0;

    /// Tries to show a notice, whatever was answered before.
    virtual void add(const NotificationRequest &request, DeliveryOutcome outcome) = 0;

    /// Tells the centre that an activation has been dealt with. Of several calls for one
    /// activation the first counts.
    virtual void acknowledge(const QString &identifier) = 0;

signals:
    /// At most once per notice. The receiver acknowledges it.
    void activated(const tallyview::NotificationActivation &activation);
};

} // namespace tallyview
