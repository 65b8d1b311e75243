#pragma once

#include "app/drawing/SoftLook.h"

#include <QRectF>

#include <vector>

namespace tallyview {

/// A picture of a surface that can be laid over any size: corners and edges as
/// they are, the uniform middle stretched. Plain value, any thread.
struct SoftPatch {
    /// One part of `image`: `source` in its pixels, `target` in points relative
    /// to the surface's upper left corner.
    struct Piece {
        QRectF target;
        QRectF source;
    };

    QImage image;
    std::vector<Piece> pieces;
};

/// The patch for `look` (in points) on a surface of `size` points at
/// `pixelRatio` device pixels per point. Cuts lie on whole device pixels. Along
/// a side too short to be stretched the picture has exactly that length.
///
/// Pictures are kept by look and shared between surfaces; main thread only.
SoftPatch softPatch(const SoftLook &look, const QSizeF &size, qreal pixelRatio);

/// `image` in the middle of an item of `size` points, on whole device pixels of the item.
SoftPatch centredPatch(const QImage &image, const QSizeF &size, qreal pixelRatio);

} // namespace tallyview
