#pragma once

#include <QDBusMessage>
#include <QString>
#include <QVariant>

namespace tallyview {

/// Where on the session bus the desktop portal offers the desktop's settings.
namespace SettingsPortal {

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString interfaceName = QStringLiteral("org.freedesktop.portal.Settings");

/// Asks for one setting; the answer is a variant, or an error if the desktop has no such setting.
QDBusMessage readCall(const QString &group, const QString &key);

/// The value of a setting in an answer or a signal: version 1 of the portal wraps its answer in a
/// second variant.
QVariant unwrapped(QVariant value);

} // namespace SettingsPortal

} // namespace tallyview
