#include "app/controls/Announcement.h"

#include <QAccessible>

#include <chrono>

namespace tallyview {

Announcement::Announcement(QObject *parent) : QObject(parent) {
    m_pause.setSingleShot(true);
    m_pause.setInterval(std::chrono::milliseconds(700));
    // A notice is read when it comes on screen; events of its own for this are newer than Qt 6.4.
    connect(&m_pause, &QTimer::timeout, this, [this] {
        QAccessibleEvent shown(m_item, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&shown);
    });
}

void Announcement::setOccasion(const QString &occasion) {
    if (m_occasion == occasion) {
        return;
    }
    if (!m_occasion.isEmpty()) {
        m_pause.start();
    }
    m_occasion = occasion;
    emit occasionChanged();
}

} // namespace tallyview
