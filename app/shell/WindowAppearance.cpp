#include "app/shell/WindowAppearance.h"

#include "app/platform/SystemAppearance.h"
#include "app/platform/UserDefaults.h"
#include "app/theme/AppearanceMode.h"

namespace tallyview {

namespace {

const QString appearanceKey = QStringLiteral("appearanceMode");

} // namespace

WindowAppearance::WindowAppearance(const UserDefaults &defaults, const SystemAppearance &system)
    : m_defaults(defaults)
    , m_system(system) {
    connect(&system, &SystemAppearance::darkChanged, this, &WindowAppearance::changed);
    connect(&system, &SystemAppearance::reducedMotionChanged, this, &WindowAppearance::changed);
    connect(&defaults, &UserDefaults::changed, this, [this](const QString &key) {
        if (key == appearanceKey) {
            emit changed();
        }
    });
}

bool WindowAppearance::dark() const { return chosen().value_or(m_system.dark()); }

std::optional<bool> WindowAppearance::chosen() const {
    const QString stored = m_defaults.text(appearanceKey).value_or(QString());
    return AppearanceMode::ofSetting(stored).prefersDark();
}

bool WindowAppearance::reducedMotion() const { return m_system.reducedMotion(); }

} // namespace tallyview
