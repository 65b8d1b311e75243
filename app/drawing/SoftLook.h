#pragma once

#include "app/drawing/SoftShape.h"

#include <QColor>
#include <QImage>
#include <QMargins>
#include <QSize>

#include <array>

namespace tallyview {

/// A blurred copy of a drawing's coverage, laid under it. Lengths in the unit
/// of the look it belongs to; a transparent colour casts nothing.
struct SoftShadow {
    QColor color = Qt::transparent;
    qreal blur = 0; ///< blur radius: twice the standard deviation
    QPointF offset;

    bool operator==(const SoftShadow &) const = default;
};

/// Everything that decides how a surface looks, apart from its size. Plain
/// value, any thread.
struct SoftLook {
    qreal radius = 0;
    CornerStyle corners = CornerStyle::continuous;
    QColor fill = Qt::transparent;
    QColor outline = Qt::transparent;
    qreal outlineWidth = 0; ///< the line is centred on the edge
    /// Cast one after another: the second by the surface and the first.
    std::array<SoftShadow, 2> shadows;

    bool operator==(const SoftLook &) const = default;

    /// The same look with every length multiplied by `factor`.
    SoftLook scaled(qreal factor) const;
};

std::size_t qHash(const SoftLook &look, std::size_t seed = 0);

/// How far the parts of a look that depend on its edges reach from each edge,
/// in whole pixels: outwards past the surface, and inwards until every row or
/// column is like the next.
struct SoftReach {
    QMargins outward;
    QMargins inward;
};

/// The reach of a look whose unit is the pixel, on a surface of `size` pixels.
SoftReach reachOf(const SoftLook &look, const QSize &size);

/// Draws a look whose unit is the pixel on a surface of `size` pixels. The
/// picture is larger than the surface by the outward reach on each side and has
/// premultiplied alpha. A surface without area gives a null image.
QImage renderLook(const SoftLook &look, const QSize &size);

} // namespace tallyview
