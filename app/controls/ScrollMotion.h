#pragma once

#include <QQuickItem>
#include <QVariantAnimation>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// Moves the content of a Flickable: to a place, by wheel, touchpad and page keys, and to a control
/// that the keyboard's focus reaches. Lengths are points. Main thread.
class ScrollMotion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The Flickable; set once.
    Q_PROPERTY(QQuickItem *view MEMBER m_view WRITE setView REQUIRED)
    /// Of a glide, in milliseconds; 0 moves at once.
    Q_PROPERTY(int duration MEMBER m_duration)
    /// Kept free around a control that comes into view.
    Q_PROPERTY(qreal revealMargin MEMBER m_revealMargin)
    /// The item of the window that has the keyboard's focus.
    Q_PROPERTY(QQuickItem *focusedItem MEMBER m_focusedItem WRITE setFocusedItem)
    /// The item that all popups of the window are in. While one has the focus the wheel does
    /// nothing.
    Q_PROPERTY(QQuickItem *popups MEMBER m_popups)
    /// Whether the window was last pressed by a finger.
    Q_PROPERTY(bool touched READ touched NOTIFY touchedChanged)

public:
    explicit ScrollMotion(QObject *parent = nullptr);

    /// Shows the content from `top` on, or from as near to it as the content goes.
    Q_INVOKABLE void scrollTo(qreal top, bool animated);
    /// As soon as the content has been laid out, at once shows it from `top` on.
    Q_INVOKABLE void beginAt(qreal top);
    /// False when there is nothing to scroll or the key is no scrolling key.
    Q_INVOKABLE bool scrollForKey(int key);
    /// Scrolls on, or back if `pages` is negative; a page is a little less than the view.
    Q_INVOKABLE void turnPages(int pages);
    Q_INVOKABLE void turnPagesAcross(int pages);
    Q_INVOKABLE void stop() { m_glide.stop(); }

    void setView(QQuickItem *view);
    void setFocusedItem(QQuickItem *item);
    bool touched() const { return m_touched; }

    /// Sees the presses of the window and the wheel over the view.
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void touchedChanged();

private:
    qreal number(const char *property) const { return m_view->property(property).toReal(); }
    qreal lowestTop() const;
    qreal farthestLeft() const;
    void scrollBy(qreal distance, bool animated);
    void scrollAcrossTo(qreal left);
    bool turn(const QWheelEvent &wheel);
    void press(const QPointerEvent &press);
    bool isUnderMenu() const;
    void reveal(const QQuickItem &item);
    bool isReached(const QQuickItem &item) const;
    void watch(QQuickWindow *window);

    QQuickItem *m_view = nullptr;
    QQuickItem *m_focusedItem = nullptr;
    QQuickItem *m_popups = nullptr;
    QVariantAnimation m_glide;
    int m_duration = 0;
    qreal m_revealMargin = 0;
    bool m_touched = false;
};

} // namespace tallyview
