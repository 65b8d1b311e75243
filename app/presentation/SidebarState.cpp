#include "app/presentation/SidebarState.h"

namespace tallyview {

void SidebarState::update() {
    if (m_counted != model()->threadsRevision()) {
        m_counted = model()->threadsRevision();
        m_projectCount = QString::number(model()->projectCount());
        m_runningCount = QString::number(model()->runningCount());
    }
}

} // namespace tallyview
