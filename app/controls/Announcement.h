#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// Has a screen reader say the name of an item, whose role is to be Accessible.Notification, when
/// the occasion for it changes and then stays for a moment, so that typing is not talked over. The
/// first occasion is none. Main thread.
class Announcement : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *item MEMBER m_item)
    Q_PROPERTY(QString occasion READ occasion WRITE setOccasion NOTIFY occasionChanged)

public:
    explicit Announcement(QObject *parent = nullptr);

    QString occasion() const { return m_occasion; }
    void setOccasion(const QString &occasion);

signals:
    void occasionChanged();

private:
    QPointer<QQuickItem> m_item;
    QString m_occasion;
    QTimer m_pause;
};

} // namespace tallyview
