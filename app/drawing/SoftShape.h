#pragma once

#include <QPainterPath>
#include <QRectF>

namespace tallyview {

/// How the corners of a rounded rectangle are drawn.
enum class CornerStyle {
    circular,   ///< quarter circles or, on a narrow shape, ellipses
    continuous, ///< curvature eases in along the edges, so no edge ends abruptly
};

/// A rounded rectangle filling `rect`. The radius of a continuous corner is capped
/// at half the shorter side and the corner turns into a quarter circle on its way
/// there, so that a capsule is a capsule; that of a circular corner is capped along
/// each side by itself, so that it turns into an ellipse. Any thread, any unit.
QPainterPath softShape(const QRectF &rect, qreal radius, CornerStyle style);

/// How far a corner of such a shape reaches along each edge, in the unit of
/// `size`.
qreal cornerReach(const QSizeF &size, qreal radius, CornerStyle style);

} // namespace tallyview
