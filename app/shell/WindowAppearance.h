#pragma once

#include <QObject>

namespace tallyview {

class SoftTheme;
class SystemAppearance;
class UserDefaults;

/// Keeps the theme on the appearance that the user chose (the setting "appearanceMode") or, where
/// the choice is left to the desktop, on the desktop's; and on the desktop's reduced motion.
/// Follows changes of either at once. Main thread.
class WindowAppearance : public QObject {
public:
    /// All outlive this object.
    WindowAppearance(SoftTheme &theme, const UserDefaults &defaults,
                     const SystemAppearance &system);

private:
    void apply();

    SoftTheme &m_theme;
    const UserDefaults &m_defaults;
    const SystemAppearance &m_system;
};

} // namespace tallyview
