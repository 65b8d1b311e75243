#pragma once

#include "app/platform/SystemAppearance.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QMap>
#include <QVariant>

#include <utility>

class QDBusVariant;

namespace tallyview {

/// The system appearance as the desktop portal's settings give it, each asked for asynchronously
/// and followed from then on. Until the portal answers, and if it has no preference, the lightness
/// of the application's palette decides; the program may set that palette only while the user has
/// chosen an appearance for it. Without the portal motion is not reduced and title bars have all
/// buttons.
class FreedesktopAppearance : public SystemAppearance {
    Q_OBJECT

public:
    /// Needs a QGuiApplication.
    explicit FreedesktopAppearance(const QDBusConnection &bus = QDBusConnection::sessionBus(),
                                   QObject *parent = nullptr);

    bool dark() const override { return m_dark; }
    bool highContrast() const override { return m_highContrast; }
    bool reducedMotion() const override { return m_reducedMotion; }
    WindowButtons windowButtons() const override { return m_windowButtons; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using Setting = std::pair<QString, QString>; ///< group and key

    Q_SLOT void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);
    void readSettings();
    void readSetting(const Setting &setting);
    void adopt(const Setting &setting, const QDBusVariant &value);
    void update();
    bool darkWanted() const;
    bool highContrastWanted() const;
    bool reducedMotionWanted() const;
    WindowButtons windowButtonsWanted() const;

    QDBusConnection m_bus;
    QDBusServiceWatcher m_portalWatcher;
    QMap<Setting, QVariant> m_settings; ///< those the portal has answered
    bool m_dark = false;
    bool m_highContrast = false;
    bool m_reducedMotion = false;
    WindowButtons m_windowButtons = WindowButtons::all();
};

} // namespace tallyview
