#include "app/presentation/TaskSummary.h"

#include <utility>

namespace tallyview {

QString TaskSummary::toolTip() const {
    const QString name = QStringLiteral("Orvik Tallyview");
    return m_text.isEmpty() ? name : name + QStringLiteral(" · ") + m_text;
}

void TaskSummary::update() {
    QString text;
    if (model()->errorMessage()) {
        text = QStringLiteral("读取失败");
    } else if (model()->lastSyncedAt()) {
        text = runningText();
    }
    if (std::exchange(m_text, text) != text) {
        emit textChanged();
    }
}

QString TaskSummary::runningText() {
    if (m_counted != model()->threadsRevision()) {
        m_counted = model()->threadsRevision();
        m_runningCount = model()->runningCount();
    }
    return QStringLiteral("%1 个任务进行中").arg(m_runningCount);
}

} // namespace tallyview
