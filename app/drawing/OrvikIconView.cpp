#include "app/drawing/OrvikIconView.h"

#include "app/drawing/AppAssets.h"

#include <cmath>

namespace tallyview {

namespace {

constexpr QSize largestSize(256, 256);

} // namespace

OrvikIconView::OrvikIconView(QQuickItem *parent) : PatchItem(parent) {
    const auto takeEdge = [this] { setSize({m_edge, m_edge}); };
    connect(this, &OrvikIconView::edgeChanged, this, takeEdge);
    takeEdge();
}

// Scaled down once: crisper than any scaling by the renderer.
SoftPatch OrvikIconView::makePatch(qreal pixelRatio) const {
    const int pixels = static_cast<int>(std::ceil(m_edge * pixelRatio));
    const QImage icon = AppAssets::orvikIcon().pixmap(largestSize, 1).toImage();
    return centredPatch(
        icon.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation), size(),
        pixelRatio);
}

} // namespace tallyview
