#include "app/platform/FreedesktopNotificationCenter.h"

#include "app/platform/BusCall.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QTimer>
#include <QUuid>

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace tallyview {

namespace {

const QString daemonService = QStringLiteral("org.freedesktop.Notifications");
const QString daemonPath = QStringLiteral("/org/freedesktop/Notifications");
const QString applicationName = QStringLiteral("Orvik Tallyview");
const QString applicationId = QStringLiteral("org.orvik.Tallyview");
const QString defaultAction = QStringLiteral("default");
const QString defaultSoundName = QStringLiteral("message-new-instant");

constexpr int expiryOfTheDaemon = -1;
// Daemons keep closed notices in a history from which they can still be clicked, so a notice is
// forgotten when there are too many, not when it closes.
constexpr qsizetype maxRemembered = 500;

QDBusMessage methodCall(const QString &service, const QString &method,
                        const QVariantList &arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, daemonPath, daemonService, method);
    call.setArguments(arguments);
    return call;
}

/// Empty for an answer, never for an error.
QString errorText(const QDBusMessage &reply) {
    if (reply.type() != QDBusMessage::ErrorMessage) {
        return {};
    }
    return reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage();
}

/// The daemon's unique name, or why there is none. Starting one also fails if one is running that
/// the bus cannot start.
std::expected<QString, QString> daemonOf(const QDBusMessage &start, const QDBusMessage &owner) {
    if (owner.type() == QDBusMessage::ReplyMessage) {
        return owner.arguments().value(0).toString();
    }
    const QString whyNotStarted = errorText(start);
    return std::unexpected(whyNotStarted.isEmpty() ? errorText(owner) : whyNotStarted);
}

/// `text` without the control characters that neither the bus nor markup can carry.
QString printable(QString text) {
    std::replace_if(
        text.begin(), text.end(),
        [](QChar c) { return c.category() == QChar::Other_Control && c != u'\n' && c != u'\t'; },
        u' ');
    return text;
}

/// Not toHtmlEscaped(): some daemons know only these three entities.
QString escaped(QString text) {
    return text.replace(u'&', QLatin1String("&amp;"))
        .replace(u'<', QLatin1String("&lt;"))
        .replace(u'>', QLatin1String("&gt;"));
}

QString noticeBody(const NotificationRequest &request, const QStringList &capabilities) {
    QStringList lines{request.subtitle, request.body};
    lines.removeAll(QString());
    const QString body = printable(lines.join(u'\n'));
    return capabilities.contains(QLatin1String("body-markup")) ? escaped(body) : body;
}

QVariantMap hints(const NotificationRequest &request) {
    QVariantMap hints{{QStringLiteral("desktop-entry"), applicationId}};
    if (request.defaultSound) {
        hints.insert(QStringLiteral("sound-name"), defaultSoundName);
    }
    return hints;
}

/// `outcome`, but every call after the first has no effect.
NotificationCenter::DeliveryOutcome onlyOnce(NotificationCenter::DeliveryOutcome outcome) {
    auto waiting = std::make_shared<NotificationCenter::DeliveryOutcome>(std::move(outcome));
    return [waiting](const QString &error) {
        if (const auto report = std::exchange(*waiting, nullptr)) {
            report(error);
        }
    };
}

} // namespace

FreedesktopNotificationCenter::FreedesktopNotificationCenter(std::chrono::milliseconds patience,
                                                             QObject *parent)
    : NotificationCenter(parent)
    , m_patience(patience)
    , m_connectionName(QUuid::createUuid().toString()) {}

FreedesktopNotificationCenter::~FreedesktopNotificationCenter() {
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void FreedesktopNotificationCenter::requestAuthorization(AuthorizationAnswer answer) {
    askDaemon([answer = std::move(answer)](const QDBusMessage &reply) {
        const QString error = errorText(reply);
        answer(error.isEmpty(), error);
    });
}

void FreedesktopNotificationCenter::readAuthorization(StatusAnswer answer) {
    askDaemon([answer = std::move(answer)](const QDBusMessage &reply) {
        answer(errorText(reply).isEmpty() ? NotificationAuthorization::authorized
                                          : NotificationAuthorization::denied);
    });
}

void FreedesktopNotificationCenter::add(const NotificationRequest &request,
                                        DeliveryOutcome outcome) {
    findDaemon([this, request, outcome = std::move(outcome)](const Daemon &daemon) {
        if (!daemon) {
            outcome(daemon.error());
            return;
        }
        show(*daemon, request, [this, daemon, request, outcome](const QString &error) {
            if (error.isEmpty()) {
                outcome(error);
            } else {
                showOnSuccessor(*daemon, request, error, outcome);
            }
        });
    });
}

void FreedesktopNotificationCenter::acknowledge(const QString &identifier) {
    const auto notice =
        std::find_if(m_activated.begin(), m_activated.end(), [&](const Notice &candidate) {
            return candidate.activation.identifier == identifier;
        });
    if (notice != m_activated.end()) {
        bus().send(methodCall(notice->daemon, QStringLiteral("CloseNotification"), {notice->id}));
        m_activated.erase(notice);
    }
}

void FreedesktopNotificationCenter::activationTokenReceived(uint id, const QString &token,
                                                            const QDBusMessage &signal) {
    if (const auto notice = find(signal.service(), id); notice != m_shown.end()) {
        notice->activation.activationToken = token;
    }
}

void FreedesktopNotificationCenter::actionInvoked(uint id, const QString &action,
                                                  const QDBusMessage &signal) {
    const auto notice = find(signal.service(), id);
    if (notice == m_shown.end() || action != defaultAction) {
        return;
    }
    const NotificationActivation activation = notice->activation;
    m_activated.append(*notice);
    m_shown.erase(notice);
    emit activated(activation);
}

QDBusConnection FreedesktopNotificationCenter::bus() {
    if (QDBusConnection open(m_connectionName); open.isConnected()) {
        return open;
    }
    QDBusConnection::disconnectFromBus(m_connectionName);
    m_shown.clear(); // unique names start over on another bus
    m_activated.clear();
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
    // From whichever daemon: find() tells whether it is the one that showed the notice.
    bus.connect(QString(), daemonPath, daemonService, QStringLiteral("ActivationToken"), this,
                SLOT(activationTokenReceived(uint, QString, QDBusMessage)));
    bus.connect(QString(), daemonPath, daemonService, QStringLiteral("ActionInvoked"), this,
                SLOT(actionInvoked(uint, QString, QDBusMessage)));
    return bus;
}

/// Sends `message` and has the reply or the error delivered within `patience`.
void FreedesktopNotificationCenter::call(const QDBusMessage &message,
                                         std::chrono::milliseconds patience, Reply reply) {
    const QDBusConnection bus = this->bus();
    const QDBusPendingCall pending =
        bus.isConnected() ? bus.asyncCall(message, static_cast<int>(patience.count()))
                          : QDBusPendingCall::fromError(
                                QDBusError(QDBusError::Disconnected, bus.lastError().message()));
    auto *watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, reply = std::move(reply)] {
        watcher->deleteLater();
        reply(watcher->reply());
    });
}

void FreedesktopNotificationCenter::askDaemon(Reply reply) {
    call(methodCall(daemonService, QStringLiteral("GetCapabilities"), {}), m_patience,
         std::move(reply));
}

/// Makes the bus start a daemon if none runs, and finds its unique name: ids are valid for one
/// daemon only, and a reply does not tell who sent it.
void FreedesktopNotificationCenter::findDaemon(Found found) {
    call(busCall(QStringLiteral("StartServiceByName"), {daemonService, 0U}), m_patience,
         [this, found = std::move(found)](const QDBusMessage &start) {
             call(busCall(QStringLiteral("GetNameOwner"), {daemonService}), m_patience,
                  [found, start](const QDBusMessage &owner) { found(daemonOf(start, owner)); });
         });
}

void FreedesktopNotificationCenter::show(const QString &daemon, const NotificationRequest &request,
                                         const DeliveryOutcome &outcome) {
    call(methodCall(daemon, QStringLiteral("GetCapabilities"), {}), m_patience,
         [this, daemon, request, outcome](const QDBusMessage &reply) {
             if (const QString error = errorText(reply); !error.isEmpty()) {
                 outcome(error);
             } else {
                 notify(daemon, request, reply.arguments().value(0).toStringList(), outcome);
             }
         });
}

/// Leaves the notice that `daemon` failed to show to its successor, if there is one by now.
void FreedesktopNotificationCenter::showOnSuccessor(const QString &daemon,
                                                    const NotificationRequest &request,
                                                    const QString &error,
                                                    const DeliveryOutcome &outcome) {
    findDaemon([this, daemon, request, error, outcome](const Daemon &successor) {
        if (successor && *successor != daemon) {
            show(*successor, request, outcome);
        } else {
            outcome(error);
        }
    });
}

/// If a daemon shows the notice after the caller has given up, a click on it still counts.
void FreedesktopNotificationCenter::notify(const QString &daemon,
                                           const NotificationRequest &request,
                                           const QStringList &capabilities,
                                           const DeliveryOutcome &outcome) {
    constexpr std::chrono::milliseconds withoutEnd{std::numeric_limits<int>::max()};
    const DeliveryOutcome report = onlyOnce(outcome);
    QTimer::singleShot(m_patience, this, [report] {
        report(QStringLiteral("The notification daemon did not answer in time"));
    });
    const QVariantList arguments{applicationName,
                                 0U,
                                 applicationId,
                                 printable(request.title),
                                 noticeBody(request, capabilities),
                                 QStringList{defaultAction, request.actionLabel},
                                 hints(request),
                                 expiryOfTheDaemon};
    call(methodCall(daemon, QStringLiteral("Notify"), arguments), withoutEnd,
         [this, daemon, request, report](const QDBusMessage &reply) {
             if (reply.type() == QDBusMessage::ReplyMessage) {
                 remember(request, daemon, reply.arguments().value(0).toUInt());
             }
             report(errorText(reply));
         });
}

void FreedesktopNotificationCenter::remember(const NotificationRequest &request,
                                             const QString &daemon, uint id) {
    if (const auto reused = find(daemon, id); reused != m_shown.end()) {
        m_shown.erase(reused);
    }
    m_shown.append({daemon, id, {request.identifier, request.groupingKey, request.userData, {}}});
    if (m_shown.size() > maxRemembered) {
        m_shown.removeFirst();
    }
}

QList<FreedesktopNotificationCenter::Notice>::iterator
FreedesktopNotificationCenter::find(const QString &daemon, uint id) {
    return std::find_if(m_shown.begin(), m_shown.end(), [&](const Notice &notice) {
        return notice.daemon == daemon && notice.id == id;
    });
}

} // namespace tallyview
