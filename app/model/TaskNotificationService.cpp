#include "app/model/TaskNotificationService.h"

#include "app/model/ThreadLink.h"
#include "app/platform/NotificationCenter.h"
#include "app/platform/UrlOpener.h"
#include "app/platform/UserDefaults.h"

#include <QDateTime>
#include <QPointer>
#include <QUuid>

#include <chrono>
#include <utility>

namespace tallyview {

namespace {

const QString grantedKey = QStringLiteral("notificationAuthorizationGranted");
const QString authorizationErrorKey = QStringLiteral("notificationAuthorizationError");
const QString statusKey = QStringLiteral("notificationAuthorizationStatus");
const QString deliveryErrorKey = QStringLiteral("notificationDeliveryError");
const QString lastAttemptKey = QStringLiteral("notificationLastDeliveryAttempt");
const QString threadIDKey = QStringLiteral("threadID");

QString freshUuid() { return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(); }

QDateTime dateTime(Instant instant) {
    const auto sinceEpoch =
        std::chrono::duration_cast<std::chrono::milliseconds>(instant.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count()).toUTC();
}

} // namespace

TaskNotificationService::TaskNotificationService(NotificationCenter &center, UserDefaults &defaults,
                                                 UrlOpener &opener, Clock clock, QObject *parent)
    : QObject(parent)
    , m_center(center)
    , m_defaults(defaults)
    , m_opener(opener)
    , m_clock(std::move(clock)) {}

void TaskNotificationService::configure() {
    connect(&m_center, &NotificationCenter::activated, this, &TaskNotificationService::openThread,
            Qt::UniqueConnection);
    m_center.requestAuthorization([self = QPointer(this)](bool granted, const QString &error) {
        if (self) {
            self->m_defaults.setValue(grantedKey, granted);
            self->m_defaults.setValue(authorizationErrorKey, error);
        }
    });
    m_center.readAuthorization([self = QPointer(this)](NotificationAuthorization status) {
        if (self) {
            self->m_defaults.setValue(statusKey, static_cast<int>(status));
        }
    });
}

void TaskNotificationService::notifyCompletion(const ThreadRecord &thread) {
    const QString id = QString::fromUtf8(thread.id());
    add({.identifier = QStringLiteral("orvik-task-complete-") + id + u'-' + freshUuid(),
         .title = QStringLiteral("Orvik 任务已完成"),
         .subtitle = QString::fromUtf8(thread->project),
         .body = QString::fromUtf8(thread->title),
         .actionLabel = QStringLiteral("在 Orvik 中打开"),
         .defaultSound = true,
         .groupingKey = id,
         .userData = {{threadIDKey, id}}});
}

void TaskNotificationService::sendTestNotification() {
    add({.identifier = QStringLiteral("orvik-task-notification-test-") + freshUuid(),
         .title = QStringLiteral("Orvik Tallyview 通知已开启"),
         .subtitle = {},
         .body = QStringLiteral("任务运行结束后，会在这里提醒你。"),
         .actionLabel = {},
         .defaultSound = true,
         .groupingKey = {},
         .userData = {}});
}

void TaskNotificationService::add(const NotificationRequest &request) {
    m_center.add(request, [self = QPointer(this)](const QString &error) {
        if (self) {
            self->recordDelivery(error);
        }
    });
}

void TaskNotificationService::recordDelivery(const QString &error) {
    m_defaults.setValue(deliveryErrorKey, error);
    m_defaults.setValue(lastAttemptKey, dateTime(m_clock()));
}

void TaskNotificationService::openThread(const NotificationActivation &activation) {
    const QVariant id = activation.userData.value(threadIDKey);
    if (id.typeId() == QMetaType::QString) {
        const QByteArray url = threadLink(id.toString().toStdString());
        QMetaObject::invokeMethod(
            this, [this, url, token = activation.activationToken] { m_opener.open(url, token); },
            Qt::QueuedConnection);
    }
    m_center.acknowledge(activation.identifier);
}

} // namespace tallyview
