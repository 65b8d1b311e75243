#pragma once

#include <QObject>
#include <QtQmlIntegration>

#include <optional>

namespace tallyview {

class SystemAppearance;
class UserDefaults;

/// The appearance and motion that the window is to have: the appearance that the user chose (the
/// setting "appearanceMode") or, where the choice is left to the desktop, the desktop's; and the
/// desktop's reduced motion. Follows changes of either at once. Main thread.
class WindowAppearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns the appearance")
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY changed)

public:
    /// Both outlive this object.
    WindowAppearance(const UserDefaults &defaults, const SystemAppearance &system);

    bool dark() const;
    /// Whether the user chose dark; nothing where the choice is left to the desktop.
    std::optional<bool> chosen() const;
    bool reducedMotion() const;

signals:
    void changed();

private:
    const UserDefaults &m_defaults;
    const SystemAppearance &m_system;
};

} // namespace tallyview
