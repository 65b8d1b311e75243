#include "app/shell/Workspace.h"

#include "app/shell/LayoutSettings.h"

#include <utility>

namespace tallyview {

Workspace::Workspace(DashboardModel &model, LayoutSettings &layout)
    : m_model(model)
    , m_layout(layout)
    , m_focusProject(model)
    , m_modeRaw(layout.dashboardModeRaw()) {
    connect(&layout, &LayoutSettings::dashboardModeChanged, this, &Workspace::followMode);
}

void Workspace::toggleMode() {
    m_layout.setDashboardMode(isFocusMode() ? DashboardMode::standard : DashboardMode::focus);
}

void Workspace::followMode() {
    const QString modeRaw = m_layout.dashboardModeRaw();
    if (std::exchange(m_modeRaw, modeRaw) == modeRaw) {
        return;
    }
    m_model.setSelectedProject(std::nullopt);
    emit focusModeChanged();
    // Only now: the workspace that has just been replaced fades out with its project open.
    m_focusProject.forget();
}

} // namespace tallyview
