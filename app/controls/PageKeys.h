#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// Which view gets the page keys that nothing around the keyboard's focus takes. Main thread.
class PageKeys : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QQuickItem *taker READ taker NOTIFY takerChanged)

public:
    using QObject::QObject;

    /// The newest view that has been offered and still exists, or null.
    QQuickItem *taker() const { return m_views.isEmpty() ? nullptr : m_views.last(); }
    Q_INVOKABLE void offer(QQuickItem *view);

signals:
    void takerChanged();

private:
    QList<QQuickItem *> m_views;
};

} // namespace tallyview
