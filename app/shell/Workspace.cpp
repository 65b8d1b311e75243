#include "app/shell/Workspace.h"

#include "app/shell/DashboardMode.h"
#include "app/shell/LayoutSettings.h"

#include <utility>

namespace tallyview {

Workspace::Workspace(DashboardModel &model, LayoutSettings &layout)
    : m_model(model)
    , m_layout(layout)
    , m_focusProject(model)
    , m_focusMode(storedFocusMode()) {
    connect(&layout, &LayoutSettings::dashboardModeChanged, this, &Workspace::followMode);
}

void Workspace::toggleMode() {
    m_layout.setDashboardMode(
        DashboardMode(m_focusMode ? DashboardMode::standard : DashboardMode::focus).rawValue());
}

bool Workspace::storedFocusMode() const {
    return DashboardMode::ofSetting(m_layout.dashboardMode()) == DashboardMode::focus;
}

void Workspace::followMode() {
    m_model.setSelectedProject(std::nullopt);
    const bool focusMode = storedFocusMode();
    if (std::exchange(m_focusMode, focusMode) != focusMode) {
        emit focusModeChanged();
    }
    // Only now: the workspace that has just been replaced fades out with its project open.
    m_focusProject.forget();
}

} // namespace tallyview
