#include "app/platform/TextScale.h"

#include "app/platform/SettingsPortal.h"

#include <QDBusReply>
#include <QDBusVariant>
#include <QDeadlineTimer>

#include <algorithm>
#include <cmath>

namespace tallyview {

namespace {

constexpr qreal usualResolution = 96;
constexpr qreal usualPointSize = 10;

const QByteArray waylandResolution = "QT_WAYLAND_FORCE_DPI";
const QByteArray scaleFactor = "QT_SCALE_FACTOR";

bool mayUseWayland(const QProcessEnvironment &environment) {
    return environment.contains(QStringLiteral("WAYLAND_DISPLAY")) ||
           environment.value(QStringLiteral("XDG_SESSION_TYPE")) == QLatin1String("wayland");
}

bool isKde(const QProcessEnvironment &environment) {
    return environment.value(QStringLiteral("XDG_CURRENT_DESKTOP"))
        .split(u':')
        .contains(QLatin1String("KDE"));
}

QVariant readSetting(const QDBusConnection &bus, const QString &group, const QString &key,
                     const QDeadlineTimer &deadline) {
    const int remaining = std::max(1, static_cast<int>(deadline.remainingTime()));
    const QDBusReply<QDBusVariant> reply =
        bus.call(SettingsPortal::readCall(group, key), QDBus::Block, remaining);
    return reply.isValid() ? SettingsPortal::unwrapped(reply.value().variant()) : QVariant();
}

qreal bounded(qreal factor) {
    return std::isfinite(factor) && factor > 0 ? std::clamp(factor, 0.5, 3.0) : 1;
}

qreal fontFactor(const QVariant &font) {
    return bounded(font.toString().split(u',').value(1).toDouble() / usualPointSize);
}

qreal ownScaleFactor(const QProcessEnvironment &environment) {
    const qreal factor = environment.value(QString::fromLatin1(scaleFactor)).toDouble();
    return factor > 0 ? factor : 1;
}

void setVariable(const QByteArray &name, const QByteArray &value) {
    if (value.isNull()) {
        qunsetenv(name.constData());
    } else {
        qputenv(name.constData(), value);
    }
}

} // namespace

TextSettings readTextSettings(const QDBusConnection &bus, const QProcessEnvironment &environment,
                              std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience);
    TextSettings settings;
    if (mayUseWayland(environment)) {
        settings.scalingFactor = readSetting(bus, QStringLiteral("org.gnome.desktop.interface"),
                                             QStringLiteral("text-scaling-factor"), deadline);
    }
    if (isKde(environment)) {
        settings.font = readSetting(bus, QStringLiteral("org.kde.kdeglobals.General"),
                                    QStringLiteral("font"), deadline);
    }
    return settings;
}

QMap<QByteArray, QByteArray> textScaleVariables(const QProcessEnvironment &environment,
                                                const TextSettings &settings) {
    QMap<QByteArray, QByteArray> variables;
    const qreal resolution = bounded(settings.scalingFactor.toDouble());
    if (resolution != 1 && !environment.contains(QString::fromLatin1(waylandResolution))) {
        variables.insert(waylandResolution,
                         QByteArray::number(qRound(usualResolution * resolution)));
    }
    const qreal font = fontFactor(settings.font);
    if (font != 1) {
        variables.insert(scaleFactor, QByteArray::number(font * ownScaleFactor(environment)));
    }
    return variables;
}

// A connection of its own: Qt's must not be opened before its application exists.
TextScale::TextScale(std::chrono::milliseconds patience) {
    const QString name = QStringLiteral("text scale");
    const auto environment = QProcessEnvironment::systemEnvironment();
    const TextSettings settings = readTextSettings(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, name), environment, patience);
    QDBusConnection::disconnectFromBus(name);
    const auto variables = textScaleVariables(environment, settings);
    for (const auto &[variable, value] : variables.asKeyValueRange()) {
        m_replaced.insert(variable, qgetenv(variable.constData()));
        setVariable(variable, value);
    }
}

TextScale::~TextScale() {
    for (const auto &[variable, value] : m_replaced.asKeyValueRange()) {
        setVariable(variable, value);
    }
}

} // namespace tallyview
