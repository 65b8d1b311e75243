#pragma once

#include "app/drawing/PatchItem.h"

#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// One shadow of a surface, in points; a blur radius is twice the standard
/// deviation. A transparent colour casts nothing.
class SurfaceShadow : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(qreal blur MEMBER m_blur NOTIFY changed)
    Q_PROPERTY(qreal x MEMBER m_x NOTIFY changed)
    Q_PROPERTY(qreal y MEMBER m_y NOTIFY changed)

public:
    using QObject::QObject;

    SoftShadow value() const { return {m_color, m_blur, {m_x, m_y}}; }

signals:
    void changed();

private:
    QColor m_color = Qt::transparent;
    qreal m_blur = 0;
    qreal m_x = 0;
    qreal m_y = 0;
};

/// A rounded rectangle with outline and up to two shadows, drawn behind its
/// children and reaching beyond the item's bounds. Main thread, as every item.
///
/// Lengths are points. The dark shadow is cast by the rectangle, the light one
/// by the rectangle and the dark shadow together; both lie under it. Any
/// property may be animated. As a `containmentMask` it encloses its rounded shape.
class SoftSurface : public tallyview::PatchItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY lookChanged)
    /// Squircle corners (the default) rather than quarter circles.
    Q_PROPERTY(bool continuous MEMBER m_continuous NOTIFY lookChanged)
    Q_PROPERTY(QColor fill MEMBER m_fill NOTIFY lookChanged)
    Q_PROPERTY(QColor outline MEMBER m_outline NOTIFY lookChanged)
    /// Centred on the edge: half of it lies outside.
    Q_PROPERTY(qreal outlineWidth MEMBER m_outlineWidth NOTIFY lookChanged)
    Q_PROPERTY(tallyview::SurfaceShadow *darkShadow READ darkShadow CONSTANT)
    Q_PROPERTY(tallyview::SurfaceShadow *lightShadow READ lightShadow CONSTANT)

public:
    explicit SoftSurface(QQuickItem *parent = nullptr);

    SurfaceShadow *darkShadow() { return &m_darkShadow; }
    SurfaceShadow *lightShadow() { return &m_lightShadow; }

    bool contains(const QPointF &point) const override;

signals:
    void lookChanged();

protected:
    SoftPatch makePatch(qreal pixelRatio) const override;

private:
    CornerStyle corners() const;
    SoftLook look() const;

    qreal m_radius = 0;
    bool m_continuous = true;
    QColor m_fill = Qt::transparent;
    QColor m_outline = Qt::transparent;
    qreal m_outlineWidth = 1;
    SurfaceShadow m_darkShadow;
    SurfaceShadow m_lightShadow;
};

} // namespace tallyview
