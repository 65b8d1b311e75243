#include "app/presentation/DetailState.h"

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
        copyText(QString::fromUtf8(m_thread->id()));
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
    m_identity = QString::fromStdString(model()->selectedThreadID().value_or("empty-detail"));
    m_detail = ThreadDetail();
    if (m_thread) {
        m_detail = threadDetail(*m_thread, model()->pinnedIDs().contains(m_thread->id()),
                                model()->environment().utcOffset(), *m_number);
    }
}

} // namespace tallyview
