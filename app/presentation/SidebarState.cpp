#include "app/presentation/SidebarState.h"

namespace tallyview {

QString SidebarState::databaseLabel() const {
    return m_readFailed ? QStringLiteral("读取失败") : QStringLiteral("SQLite · 本机只读");
}

void SidebarState::update() {
    m_readFailed = model()->errorMessage().has_value();
    if (m_counted != model()->threadsRevision()) {
        m_counted = model()->threadsRevision();
        m_projectCount = QString::number(model()->projectCount());
        m_runningCount = QString::number(model()->runningCount());
    }
    emit changed();
}

} // namespace tallyview
