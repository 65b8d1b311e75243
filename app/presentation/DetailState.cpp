#include "app/presentation/DetailState.h"

#include <utility>

namespace tallyview {

void DetailState::togglePin() {
    if (m_thread) {
        model()->togglePin(*m_thread);
    }
}

void DetailState::open() const {
    if (m_thread) {
        model()->open(*m_thread);
    }
}

void DetailState::copyID() const {
    if (m_thread) {
        copyText(QString::fromStdString(m_thread->id()));
    }
}

void DetailState::copyText(const QString &text) const {
    model()->environment().pasteboard.setText(text);
}

void DetailState::update() {
    if (!m_number) {
        m_number = ThreadFormatting::numberIn(model()->environment().numberLocale);
    }
    m_thread = model()->selectedThread();
    ThreadDetail detail;
    if (m_thread) {
        const DashboardEnvironment &environment = model()->environment();
        detail = threadDetail(*m_thread, model()->pinnedIDs().contains(m_thread->id()),
                              environment.utcOffset(), *m_number);
    }
    const bool differs = std::exchange(m_detail, detail) != detail;
    const QString identity =
        QString::fromStdString(model()->selectedThreadID().value_or("empty-detail"));
    if (std::exchange(m_identity, identity) != identity) {
        emit identityChanged();
    }
    if (differs) {
        emit detailChanged();
    }
}

} // namespace tallyview
