#include "app/shell/LayoutSettings.h"

#include "app/platform/UserDefaults.h"
#include "app/theme/AppearanceMode.h"

#include <algorithm>

namespace tallyview {

namespace {

const QString sidebarWidthKey = QStringLiteral("sidebarWidth");
const QString dashboardModeKey = QStringLiteral("dashboardMode");
const QString appearanceModeKey = QStringLiteral("appearanceMode");

double bounded(double width) {
    return std::clamp(width, LayoutSettings::minimumSidebarWidth,
                      LayoutSettings::maximumSidebarWidth);
}

} // namespace

LayoutSettings::LayoutSettings(UserDefaults &defaults) : m_defaults(defaults) {
    connect(&defaults, &UserDefaults::changed, this, &LayoutSettings::announce);
}

double LayoutSettings::sidebarWidth() const {
    return bounded(m_defaults.number(sidebarWidthKey).value_or(defaultSidebarWidth));
}

void LayoutSettings::setSidebarWidth(double width) {
    if (bounded(width) != sidebarWidth()) {
        m_defaults.setValue(sidebarWidthKey, bounded(width));
    }
}

void LayoutSettings::healSidebarWidth() { m_defaults.setValue(sidebarWidthKey, sidebarWidth()); }

QString LayoutSettings::dashboardModeRaw() const {
    return m_defaults.text(dashboardModeKey)
        .value_or(DashboardMode(DashboardMode::standard).rawValue());
}

void LayoutSettings::setDashboardMode(DashboardMode mode) {
    m_defaults.setValue(dashboardModeKey, mode.rawValue());
}

QString LayoutSettings::appearanceMode() const {
    const QString stored = m_defaults.text(appearanceModeKey).value_or(QString());
    return AppearanceMode::ofSetting(stored).rawValue();
}

void LayoutSettings::setAppearanceMode(const QString &rawValue) {
    m_defaults.setValue(appearanceModeKey, rawValue);
}

void LayoutSettings::announce(const QString &key) {
    if (key == sidebarWidthKey) {
        emit sidebarWidthChanged();
    } else if (key == dashboardModeKey) {
        emit dashboardModeChanged();
    } else if (key == appearanceModeKey) {
        emit appearanceModeChanged();
    }
}

} // namespace tallyview
