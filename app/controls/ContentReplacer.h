#pragma once

#include <QQmlComponent>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// Makes `content` anew whenever `identity` changes. What is replaced is told that it is no longer
/// live, and stays until it asks to be dropped; the keyboard's focus moves on into the new content.
/// Main thread.
class ContentReplacer : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString identity MEMBER m_identity WRITE setIdentity NOTIFY identityChanged REQUIRED)
    /// Makes a ReplaceableContent.
    Q_PROPERTY(QQmlComponent *content MEMBER m_content REQUIRED)
    /// Of a change, in milliseconds.
    Q_PROPERTY(int duration MEMBER m_duration NOTIFY durationChanged)

public:
    using QQuickItem::QQuickItem;

    void setIdentity(const QString &identity);

    /// `content` has gone from sight.
    Q_INVOKABLE static void drop(QQuickItem *content);

    void componentComplete() override;

signals:
    void identityChanged();
    void durationChanged();

private:
    void make();
    void replace();

    QString m_identity;
    QQmlComponent *m_content = nullptr;
    int m_duration = 0;
    QQuickItem *m_current = nullptr; ///< the content that is not being replaced
};

} // namespace tallyview
