#include "app/platform/FreedesktopAppearance.h"

#include "app/platform/SettingsPortal.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <array>

namespace tallyview {

namespace {

using Setting = std::pair<QString, QString>;
const Setting colorScheme{QStringLiteral("org.freedesktop.appearance"),
                          QStringLiteral("color-scheme")};
const Setting contrast{QStringLiteral("org.freedesktop.appearance"), QStringLiteral("contrast")};
const Setting reducedMotionFlag{QStringLiteral("org.freedesktop.appearance"),
                                QStringLiteral("reduced-motion")};
const Setting enableAnimations{QStringLiteral("org.gnome.desktop.interface"),
                               QStringLiteral("enable-animations")};
const Setting animationFactor{QStringLiteral("org.kde.kdeglobals.KDE"),
                              QStringLiteral("AnimationDurationFactor")};
const Setting buttonLayout{QStringLiteral("org.gnome.desktop.wm.preferences"),
                           QStringLiteral("button-layout")};
const std::array settings{colorScheme,      contrast,        reducedMotionFlag,
                          enableAnimations, animationFactor, buttonLayout};

enum ColorScheme : uint { noPreference = 0, preferDark = 1, preferLight = 2 };

bool isDark(const QPalette &palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

bool isZero(const QVariant &value) {
    bool isNumber = false;
    return value.toDouble(&isNumber) == 0 && isNumber;
}

} // namespace

FreedesktopAppearance::FreedesktopAppearance(const QDBusConnection &bus, QObject *parent)
    : SystemAppearance(parent)
    , m_bus(bus)
    , m_portalWatcher(SettingsPortal::service, bus, QDBusServiceWatcher::WatchForRegistration)
    , m_dark(darkWanted()) {
    qGuiApp->installEventFilter(this);
    qRegisterMetaType<QDBusVariant>(); // connect() looks the slot's types up by name
    m_bus.connect(SettingsPortal::service, SettingsPortal::path, SettingsPortal::interfaceName,
                  QStringLiteral("SettingChanged"), this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    connect(&m_portalWatcher, &QDBusServiceWatcher::serviceRegistered, this,
            &FreedesktopAppearance::readSettings);
    readSettings();
}

bool FreedesktopAppearance::eventFilter(QObject *watched, QEvent *event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) {
        update();
    }
    return SystemAppearance::eventFilter(watched, event);
}

void FreedesktopAppearance::settingChanged(const QString &group, const QString &key,
                                           const QDBusVariant &value) {
    adopt({group, key}, value);
}

void FreedesktopAppearance::readSettings() {
    for (const Setting &setting : settings) {
        readSetting(setting);
    }
}

void FreedesktopAppearance::readSetting(const Setting &setting) {
    const auto call = m_bus.asyncCall(SettingsPortal::readCall(setting.first, setting.second));
    auto *watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, setting] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        watcher->deleteLater();
        if (!reply.isError()) {
            adopt(setting, reply.value());
        }
    });
}

void FreedesktopAppearance::adopt(const Setting &setting, const QDBusVariant &value) {
    if (std::find(settings.begin(), settings.end(), setting) != settings.end()) {
        m_settings.insert(setting, SettingsPortal::unwrapped(value.variant()));
        update();
    }
}

void FreedesktopAppearance::update() {
    const bool wasDark = std::exchange(m_dark, darkWanted());
    const bool wasHighContrast = std::exchange(m_highContrast, highContrastWanted());
    const bool wasReduced = std::exchange(m_reducedMotion, reducedMotionWanted());
    const auto oldButtons = std::exchange(m_windowButtons, windowButtonsWanted());
    if (m_dark != wasDark) {
        emit darkChanged();
    }
    if (m_highContrast != wasHighContrast) {
        emit highContrastChanged();
    }
    if (m_reducedMotion != wasReduced) {
        emit reducedMotionChanged();
    }
    if (m_windowButtons != oldButtons) {
        emit windowButtonsChanged();
    }
}

bool FreedesktopAppearance::darkWanted() const {
    switch (m_settings.value(colorScheme).toUInt()) {
    case preferDark:
        return true;
    case preferLight:
        return false;
    default:
        return isDark(QGuiApplication::palette());
    }
}

bool FreedesktopAppearance::highContrastWanted() const {
    return m_settings.value(contrast).toUInt() == 1;
}

bool FreedesktopAppearance::reducedMotionWanted() const {
    return m_settings.value(reducedMotionFlag).toUInt() == 1 ||
           m_settings.value(enableAnimations, true) == QVariant(false) ||
           isZero(m_settings.value(animationFactor));
}

WindowButtons FreedesktopAppearance::windowButtonsWanted() const {
    const QVariant layout = m_settings.value(buttonLayout);
    return layout.typeId() == QMetaType::QString ? WindowButtons::fromLayout(layout.toString())
                                                 : WindowButtons::all();
}

} // namespace tallyview
