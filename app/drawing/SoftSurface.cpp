#include "app/drawing/SoftSurface.h"

namespace tallyview {

SoftSurface::SoftSurface(QQuickItem *parent) : PatchItem(parent) {
    connect(this, &SoftSurface::lookChanged, this, &QQuickItem::polish);
    connect(&m_darkShadow, &SurfaceShadow::changed, this, &QQuickItem::polish);
    connect(&m_lightShadow, &SurfaceShadow::changed, this, &QQuickItem::polish);
}

bool SoftSurface::contains(const QPointF &point) const {
    return softShape(boundingRect(), m_radius, corners()).contains(point);
}

CornerStyle SoftSurface::corners() const {
    return m_continuous ? CornerStyle::continuous : CornerStyle::circular;
}

SoftLook SoftSurface::look() const {
    return {
        .radius = m_radius,
        .corners = corners(),
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
