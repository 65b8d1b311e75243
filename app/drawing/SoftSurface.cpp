#include "app/drawing/SoftSurface.h"

namespace tallyview {

SoftSurface::SoftSurface(QQuickItem *parent) : PatchItem(parent) {
    connect(this, &SoftSurface::lookChanged, this, &QQuickItem::polish);
    connect(&m_darkShadow, &SurfaceShadow::changed, this, &QQuickItem::polish);
    connect(&m_lightShadow, &SurfaceShadow::changed, this, &QQuickItem::polish);
}

SoftLook SoftSurface::look() const {
    return {
        .radius = m_radius,
        .corners = m_continuous ? CornerStyle::continuous : CornerStyle::circular,
        .fill = m_fill,
        .outline = m_outline,
        .outlineWidth = m_outlineWidth,
        .shadows = {m_darkShadow.value(), m_lightShadow.value()},
    };
}

SoftPatch SoftSurface::makePatch(qreal pixelRatio) const {
    return softPatch(look(), size(), pixelRatio);
}

} // namespace tallyview
