#include "app/shell/LayoutSettings.h"

#include "app/platform/UserDefaults.h"
#include "app/shell/DashboardMode.h"
#include "app/theme/AppearanceMode.h"

#include <algorithm>

namespace tallyview {

namespace {

const QString sidebarWidthKey = QStringLiteral("sidebarWidth");
const QString dashboardModeKey = QStringLiteral("dashboardMode");
const QString appearanceModeKey = QStringLiteral("appearanceMode");

} // namespace

LayoutSettings::LayoutSettings(UserDefaults &defaults) : m_defaults(defaults) {
    connect(&defaults, &UserDefaults::changed, this, &LayoutSettings::announce);
}

double LayoutSettings::sidebarWidth() const {
    const double stored = m_defaults.number(sidebarWidthKey).value_or(defaultSidebarWidth);
    return std::clamp(stored, minimumSidebarWidth, maximumSidebarWidth);
}

void LayoutSettings::setSidebarWidth(double width) {
    const double bounded = std::clamp(width, minimumSidebarWidth, maximumSidebarWidth);
    if (bounded != sidebarWidth()) {
        m_defaults.setValue(sidebarWidthKey, bounded);
    }
}

void LayoutSettings::healSidebarWidth() { m_defaults.setValue(sidebarWidthKey, sidebarWidth()); }

QString LayoutSettings::dashboardMode() const {
    return m_defaults.text(dashboardModeKey)
        .value_or(DashboardMode(DashboardMode::standard).rawValue());
}

void LayoutSettings::setDashboardMode(const QString &rawValue) {
    m_defaults.setValue(dashboardModeKey, rawValue);
}

QString LayoutSettings::appearanceMode() const {
    return m_defaults.text(appearanceModeKey)
        .value_or(AppearanceMode(AppearanceMode::system).rawValue());
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
