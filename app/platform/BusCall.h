#pragma once

#include <QDBusMessage>

namespace tallyview {

/// A call to the bus itself.
inline QDBusMessage busCall(const QString &method, const QVariantList &arguments) {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage call =
        QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
    call.setArguments(arguments);
    return call;
}

} // namespace tallyview
