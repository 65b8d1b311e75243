#include "app/drawing/SoftShape.h"

#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tallyview {
namespace {

/// Share of the radius by which a continuous corner reaches further along the
/// edge than a quarter circle does.
constexpr qreal fullEase = 0.5287;

bool isElliptic(const QSizeF &size, qreal radius, CornerStyle style) {
    return style == CornerStyle::circular && radius > std::min(size.width(), size.height()) / 2;
}

struct Corner {
    qreal radius;
    qreal ease; ///< 0 is a quarter circle

    qreal reach() const { return radius * (1 + ease); }
};

Corner cornerOf(const QSizeF &size, qreal radius, CornerStyle style) {
    const qreal half = std::min(size.width(), size.height()) / 2;
    const qreal capped = std::clamp(radius, qreal(0), half);
    if (style == CornerStyle::circular || capped <= 0) {
        return {capped, 0};
    }
    return {capped, std::clamp(half / capped - 1, qreal(0), fullEase)};
}

/// The points after the first of three Bézier segments that lead from
/// (reach, 0) on the upper edge to (0, reach) on the left edge.
///
/// The middle one is an arc of the circle; the outer ones leave the edge with
/// no curvature and arrive at the arc with the arc's own.
std::array<QPointF, 9> cornerCurve(const Corner &corner) {
    const qreal r = corner.radius;
    const qreal start = corner.ease * std::numbers::pi / 4; // where the arc begins
    const qreal t = std::tan(start / 2);
    const QPointF arcStart(r - r * std::sin(start), r - r * std::cos(start));
    const QPointF tangent(r - r * t, 0);
    const QPointF bend(tangent.x() + 0.75 * r * t * (1 + t * t), 0);

    const qreal span = std::numbers::pi / 2 - 2 * start;
    const qreal handle = 4.0 / 3.0 * std::tan(span / 4) * r;
    const QPointF arcHandle = arcStart + QPointF(-std::cos(start), std::sin(start)) * handle;

    return {bend,
            tangent,
            arcStart,
            arcHandle,
            arcHandle.transposed(),
            arcStart.transposed(),
            tangent.transposed(),
            bend.transposed(),
            QPointF(0, corner.reach())};
}

} // namespace

qreal cornerReach(const QSizeF &size, qreal radius, CornerStyle style) {
    if (isElliptic(size, radius, style)) {
        return std::min(radius, std::max(size.width(), size.height()) / 2);
    }
    return cornerOf(size, radius, style).reach();
}

QPainterPath softShape(const QRectF &rect, qreal radius, CornerStyle style) {
    QPainterPath path;
    if (isElliptic(rect.size(), radius, style)) {
        path.addRoundedRect(rect, radius, radius);
        return path;
    }
    const Corner corner = cornerOf(rect.size(), radius, style);
    if (corner.radius <= 0) {
        path.addRect(rect);
        return path;
    }
    const auto curve = cornerCurve(corner);
    const qreal w = rect.width();
    const qreal h = rect.height();
    // Counter-clockwise from the upper left corner; each corner is the first
    // one turned by a quarter.
    const std::array<QTransform, 4> corners = {
        QTransform(1, 0, 0, 1, rect.left(), rect.top()),
        QTransform(0, -1, 1, 0, rect.left(), rect.top() + h),
        QTransform(-1, 0, 0, -1, rect.left() + w, rect.top() + h),
        QTransform(0, 1, -1, 0, rect.left() + w, rect.top()),
    };
    path.moveTo(corners[0].map(QPointF(corner.reach(), 0)));
    for (const QTransform &placed : corners) {
        path.lineTo(placed.map(QPointF(corner.reach(), 0)));
        for (std::size_t i = 0; i < curve.size(); i += 3) {
            path.cubicTo(placed.map(curve[i]), placed.map(curve[i + 1]), placed.map(curve[i + 2]));
        }
    }
    path.closeSubpath();
    return path;
}

} // namespace tallyview
