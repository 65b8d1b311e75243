#include "app/platform/FreedesktopInstance.h"

#include "app/platform/BusCall.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>

namespace tallyview {

namespace {

const QString applicationName = QStringLiteral("org.orvik.Tallyview");
const QString applicationPath = QStringLiteral("/org/orvik/Tallyview");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");
const QString wayland = QStringLiteral("activation-token");
const QString x11 = QStringLiteral("desktop-startup-id");

QString tokenOf(const QVariantMap &platformData) {
    const QString token = platformData.value(wayland).toString();
    return token.isEmpty() ? platformData.value(x11).toString() : token;
}

QVariantMap platformDataOf(const QString &token) {
    return token.isEmpty() ? QVariantMap() : QVariantMap{{wayland, token}, {x11, token}};
}

int remaining(const QDeadlineTimer &deadline) {
    return std::max(1, static_cast<int>(deadline.remainingTime()));
}

/// Calls the process that has the name; never makes the bus start one.
QDBusMessage activateOther(const QDBusConnection &bus, const QString &token,
                           const QDeadlineTimer &deadline) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        applicationName, applicationPath, applicationInterface, QStringLiteral("Activate"));
    call.setAutoStartService(false);
    call.setArguments({platformDataOf(token)});
    return bus.call(call, QDBus::Block, remaining(deadline));
}

/// Whether a call failed because the process that was called is gone, or may be.
bool isGone(const QDBusMessage &reply) {
    const QDBusError::ErrorType type = QDBusError(reply).type();
    return type == QDBusError::ServiceUnknown || type == QDBusError::NoReply ||
           type == QDBusError::UnknownObject;
}

} // namespace

FreedesktopInstance::FreedesktopInstance(const QDBusConnection &bus,
                                         std::chrono::milliseconds patience, QObject *parent)
    : ApplicationInstance(parent)
    , m_bus(bus)
    , m_patience(patience) {}

FreedesktopInstance::~FreedesktopInstance() {
    m_bus.send(busCall(QStringLiteral("ReleaseName"), {applicationName}));
}

std::expected<ApplicationInstance::Role, QString>
FreedesktopInstance::claim(const std::optional<QString> &activationToken) {
    if (!m_bus.isConnected()) {
        return Role::primary;
    }
    // Before the name is ours, because from then on others may call.
    m_bus.registerObject(applicationPath, this, QDBusConnection::ExportScriptableSlots);
    const QDeadlineTimer deadline(m_patience);
    while (!takeName(deadline)) {
        if (!activationToken) {
            return Role::handedOver;
        }
        const QDBusMessage reply = activateOther(m_bus, *activationToken, deadline);
        if (reply.type() == QDBusMessage::ReplyMessage) {
            return Role::handedOver;
        }
        if (!isGone(reply) || deadline.hasExpired()) {
            return std::unexpected(reply.errorMessage());
        }
        QThread::msleep(20); // it is about to give the name back
    }
    return Role::primary;
}

/// False when another process has the name. A bus that does not answer counts as there being no
/// other, so it gets at least a second even at the end of the deadline.
bool FreedesktopInstance::takeName(const QDeadlineTimer &deadline) {
    constexpr uint doNotQueue = 4;
    constexpr uint existsAlready = 3;
    const QDBusMessage reply =
        m_bus.call(busCall(QStringLiteral("RequestName"), {applicationName, doNotQueue}),
                   QDBus::Block, std::max(1000, remaining(deadline)));
    return reply.arguments().value(0) != existsAlready;
}

QString FreedesktopInstance::environmentToken() {
    const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qEnvironmentVariable("DESKTOP_STARTUP_ID") : token;
}

void FreedesktopInstance::Activate(const QVariantMap &platformData) {
    emit activated(tokenOf(platformData));
}

void FreedesktopInstance::Open(const QStringList &, const QVariantMap &platformData) {
    Activate(platformData);
}

void FreedesktopInstance::ActivateAction(const QString &, const QVariantList &,
                                         const QVariantMap &platformData) {
    Activate(platformData);
}

} // namespace tallyview
