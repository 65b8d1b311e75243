#pragma once

#include <QPainterPath>
#include <QRectF>

namespace tallyview {

/// How the corners of a rounded rectangle are drawn.
enum class CornerStyle {
    circular,   ///< quarter circles
    continuous, ///< curvature eases in along the edges, so no edge ends abruptly
};

/// A rounded rectangle filling `rect`. The radius is capped at half the shorter
/// side; a continuous corner turns into a quarter circle on its way there, so
/// that a capsule is a capsule in either style. Any thread, any unit.
QPainterPath softShape(const QRectF &rect, qreal radius, CornerStyle style);

/// How far a corner of such a shape reaches along each edge, in the unit of
/// `size`.
qreal cornerReach(const QSizeF &size, qreal radius, CornerStyle style);

} // namespace tallyview
