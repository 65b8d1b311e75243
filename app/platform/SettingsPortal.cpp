#include "app/platform/SettingsPortal.h"

#include <QDBusVariant>

namespace tallyview {

QDBusMessage SettingsPortal::readCall(const QString &group, const QString &key) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, interfaceName, QStringLiteral("Read"));
    call.setArguments({group, key});
    return call;
}

QVariant SettingsPortal::unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace tallyview
