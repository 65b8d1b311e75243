#include "app/shell/WindowAppearance.h"

#include "app/platform/SystemAppearance.h"
#include "app/platform/UserDefaults.h"
#include "app/theme/SoftTheme.h"

namespace tallyview {

namespace {

const QString appearanceKey = QStringLiteral("appearanceMode");

} // namespace

WindowAppearance::WindowAppearance(SoftTheme &theme, const UserDefaults &defaults,
                                   const SystemAppearance &system)
    : m_theme(theme), m_defaults(defaults), m_system(system) {
    connect(&system, &SystemAppearance::darkChanged, this, &WindowAppearance::apply);
    connect(&system, &SystemAppearance::reducedMotionChanged, this, &WindowAppearance::apply);
    connect(&defaults, &UserDefaults::changed, this, [this](const QString &key) {
        if (key == appearanceKey) {
            apply();
        }
    });
    apply();
}

void WindowAppearance::apply() {
    const QString stored = m_defaults.text(appearanceKey).value_or(QString());
    const auto preferred = AppearanceMode::ofSetting(stored).prefersDark();
    m_theme.setProperty("dark", preferred.value_or(m_system.dark()));
    m_theme.setProperty("reducedMotion", m_system.reducedMotion());
}

} // namespace tallyview
