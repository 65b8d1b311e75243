#include "app/controls/ContentReplacer.h"

#include <QQuickWindow>

#include <utility>

namespace tallyview {

namespace {

/// The item that has the keyboard's focus inside `content`.
QQuickItem *focusedIn(const QQuickItem &content) {
    QQuickItem *item = content.window() ? content.window()->activeFocusItem() : nullptr;
    return item && content.isAncestorOf(item) ? item : nullptr;
}

} // namespace

void ContentReplacer::componentComplete() {
    QQuickItem::componentComplete();
    make();
}

void ContentReplacer::setIdentity(const QString &identity) {
    if (std::exchange(m_identity, identity) == identity) {
        return;
    }
    emit identityChanged();
    if (m_current) {
        replace();
    }
}

void ContentReplacer::make() {
    auto *content = qobject_cast<QQuickItem *>(
        m_content->createWithInitialProperties({{"parent", QVariant::fromValue<QQuickItem *>(this)},
                                                {"identity", m_identity},
                                                {"replacer", QVariant::fromValue(this)},
                                                {"replaces", m_current != nullptr}},
                                               m_content->creationContext()));
    content->setParent(this);
    m_current = content;
}

void ContentReplacer::drop(QQuickItem *content) {
    content->setParentItem(nullptr);
    content->deleteLater();
}

void ContentReplacer::replace() {
    const QQuickItem *focused = focusedIn(*m_current);
    const bool isRinged = focused && focused->property("visualFocus").toBool();
    // It takes no input any more, so it gives up the focus.
    m_current->setProperty("live", false);
    make();
    if (focused) {
        m_current->nextItemInFocusChain()->forceActiveFocus(isRinged ? Qt::TabFocusReason
                                                                     : Qt::OtherFocusReason);
    }
}

} // namespace tallyview
