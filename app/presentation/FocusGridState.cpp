#include "app/presentation/FocusGridState.h"

namespace tallyview {

void FocusGridState::update() {
    m_evaluatedAt = model()->environment().now();
    m_projects = model()->projectSummaries();
    m_projectCount = QString::number(model()->projectCount());
    m_runningCount = QString::number(model()->runningCount());
    m_totalCount = QString::number(model()->rootCount());
    m_face = currentFace();
}

FocusGridState::Face FocusGridState::currentFace() const {
    if (model()->isLoading() && model()->threads().empty()) {
        return Loading;
    }
    return m_projects.empty() ? Empty : Grid;
}

} // namespace tallyview
