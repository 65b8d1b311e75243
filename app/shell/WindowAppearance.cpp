#include "app/shell/WindowAppearance.h"

#include "app/platform/SystemAppearance.h"
#include "app/shell/LayoutSettings.h"
#include "app/theme/AppearanceMode.h"

namespace tallyview {

WindowAppearance::WindowAppearance(const LayoutSettings &layout, const SystemAppearance &system)
    : m_layout(layout)
    , m_system(system) {
    connect(&system, &SystemAppearance::darkChanged, this, &WindowAppearance::changed);
    connect(&system, &SystemAppearance::highContrastChanged, this, &WindowAppearance::changed);
    connect(&system, &SystemAppearance::reducedMotionChanged, this, &WindowAppearance::changed);
    connect(&layout, &LayoutSettings::appearanceModeChanged, this, &WindowAppearance::changed);
}

bool WindowAppearance::dark() const { return chosen().value_or(m_system.dark()); }

std::optional<bool> WindowAppearance::chosen() const {
    return AppearanceMode::ofSetting(m_layout.appearanceMode()).prefersDark();
}

bool WindowAppearance::highContrast() const { return m_system.highContrast(); }

bool WindowAppearance::reducedMotion() const { return m_system.reducedMotion(); }

} // namespace tallyview
