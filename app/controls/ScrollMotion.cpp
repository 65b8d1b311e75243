#include "app/controls/ScrollMotion.h"

#include <QPointerEvent>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace tallyview {

namespace {

/// One notch of a wheel.
constexpr qreal wheelStep = 96;
/// The share of the view that is a page.
constexpr qreal page = 0.9;

} // namespace

ScrollMotion::ScrollMotion(QObject *parent) : QObject(parent) {
    QEasingCurve easeOut(QEasingCurve::BezierSpline);
    easeOut.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    m_glide.setEasingCurve(easeOut);
    connect(&m_glide, &QVariantAnimation::valueChanged, this, [this](const QVariant &top) {
        // The content may have become shorter on the way.
        m_view->setProperty("contentY", std::min(top.toReal(), lowestTop()));
    });
}

void ScrollMotion::setView(QQuickItem *view) {
    m_view = view;
    view->installEventFilter(this);
    connect(view, &QQuickItem::windowChanged, this, &ScrollMotion::watch);
    watch(view->window());
}

void ScrollMotion::watch(QQuickWindow *window) {
    if (window) {
        window->installEventFilter(this);
    }
}

bool ScrollMotion::eventFilter(QObject *watched, QEvent *event) {
    if (watched == m_view && event->type() == QEvent::Wheel) {
        event->setAccepted(isUnderMenu() || turn(*static_cast<const QWheelEvent *>(event)));
        return true;
    }
    if (event->type() == QEvent::TouchBegin || event->type() == QEvent::MouseButtonPress) {
        press(*static_cast<const QPointerEvent *>(event));
    }
    return false;
}

void ScrollMotion::press(const QPointerEvent &press) {
    // What is touched or gripped stands still.
    if (m_view->contains(m_view->mapFromScene(press.points().constFirst().scenePosition()))) {
        stop();
    }
    const bool touched = press.deviceType() == QInputDevice::DeviceType::TouchScreen;
    if (std::exchange(m_touched, touched) != touched) {
        emit touchedChanged();
    }
}

bool ScrollMotion::isUnderMenu() const {
    return m_popups && m_focusedItem && m_popups->isAncestorOf(m_focusedItem);
}

qreal ScrollMotion::lowestTop() const {
    return std::max(0.0, number("contentHeight") - m_view->height());
}

qreal ScrollMotion::farthestLeft() const {
    return std::max(0.0, number("contentWidth") - m_view->width());
}

void ScrollMotion::scrollTo(qreal top, bool animated) {
    m_glide.stop();
    const qreal target = std::clamp(top, 0.0, lowestTop());
    m_glide.setStartValue(number("contentY"));
    m_glide.setEndValue(target);
    m_glide.setDuration(animated ? m_duration : 0);
    m_glide.start();
}

void ScrollMotion::beginAt(qreal top) {
    if (top > 0 && m_view->window()) {
        connect(
            m_view->window(), &QQuickWindow::afterAnimating, this,
            [this, top] { scrollTo(top, false); }, Qt::SingleShotConnection);
    }
}

void ScrollMotion::scrollBy(qreal distance, bool animated) {
    const bool goesOn = animated && m_glide.state() == QAbstractAnimation::Running;
    scrollTo((goesOn ? m_glide.endValue().toReal() : number("contentY")) + distance, animated);
}

void ScrollMotion::scrollAcrossTo(qreal left) {
    m_view->setProperty("contentX", std::round(std::clamp(left, 0.0, farthestLeft())));
}

void ScrollMotion::turnPages(int pages) { scrollBy(pages * page * m_view->height(), true); }

void ScrollMotion::turnPagesAcross(int pages) {
    scrollAcrossTo(number("contentX") + pages * page * m_view->width());
}

bool ScrollMotion::scrollForKey(int key) {
    if (lowestTop() == 0) {
        return false;
    }
    switch (key) {
    case Qt::Key_PageUp:
        turnPages(-1);
        return true;
    case Qt::Key_PageDown:
        turnPages(1);
        return true;
    case Qt::Key_Home:
        scrollTo(0, true);
        return true;
    case Qt::Key_End:
        scrollTo(lowestTop(), true);
        return true;
    default:
        return false;
    }
}

bool ScrollMotion::turn(const QWheelEvent &wheel) {
    // A touchpad reports pixels, none while it moves too slowly for one; a wheel reports notches.
    const bool isSmooth = !wheel.pixelDelta().isNull() || wheel.phase() != Qt::NoScrollPhase;
    const QPointF distance =
        isSmooth ? QPointF(wheel.pixelDelta()) : QPointF(wheel.angleDelta()) / 120 * wheelStep;
    // What cannot scroll leaves the wheel to the view around it.
    const bool goesAcross = distance.x() != 0 && farthestLeft() > 0;
    const bool goesDown = distance.y() != 0 && lowestTop() > 0;
    if (goesAcross) {
        scrollAcrossTo(number("contentX") - distance.x());
    }
    if (goesDown) {
        scrollBy(-distance.y(), !isSmooth && wheel.angleDelta().y() % 120 == 0);
    }
    return goesAcross || goesDown;
}

void ScrollMotion::setFocusedItem(QQuickItem *item) {
    m_focusedItem = item;
    const auto *content = m_view->property("contentItem").value<QQuickItem *>();
    if (item && content->isAncestorOf(item) && isReached(*item)) {
        reveal(*item);
    }
}

/// Whether the keyboard has brought the focus to `item`. An item that is no control does not tell,
/// and one as tall as the view would jump about under the mouse.
bool ScrollMotion::isReached(const QQuickItem &item) const {
    const QVariant visualFocus = item.property("visualFocus");
    return visualFocus.isValid() ? visualFocus.toBool()
                                 : item.activeFocusOnTab() && item.height() < m_view->height();
}

void ScrollMotion::reveal(const QQuickItem &item) {
    const auto *content = m_view->property("contentItem").value<QQuickItem *>();
    const QRectF place =
        item.mapRectToItem(content, QRectF({}, item.size()))
            .adjusted(-m_revealMargin, -m_revealMargin, m_revealMargin, m_revealMargin);
    if (place.left() < number("contentX")) {
        scrollAcrossTo(place.left());
    } else if (place.right() > number("contentX") + m_view->width()) {
        scrollAcrossTo(place.right() - m_view->width());
    }
    if (place.top() < number("contentY")) {
        scrollTo(place.top(), true);
    } else if (place.bottom() > number("contentY") + m_view->height()) {
        scrollTo(place.bottom() - m_view->height(), true);
    }
}

} // namespace tallyview
