#include "app/drawing/SoftLook.h"

#include "app/drawing/CoveragePlane.h"

#include <QHashFunctions>
#include <QPainter>

#include <cmath>

namespace tallyview {
namespace {

bool casts(const SoftShadow &shadow) { return shadow.color.alpha() > 0; }

double sigmaOf(const SoftShadow &shadow) { return shadow.blur / 2; }

QMargins roundedUp(const QMarginsF &margins) {
    const auto up = [](qreal length) { return static_cast<int>(std::ceil(length)); };
    return {up(margins.left()), up(margins.top()), up(margins.right()), up(margins.bottom())};
}

QMargins atLeast(const QMargins &a, const QMargins &b) { return a | b; }

/// What `edges` becomes once a blurred copy, moved by `offset`, joins it.
/// `outward` tells whether positive lengths point away from the surface.
QMargins grownBy(const SoftShadow &shadow, const QMargins &edges, bool outward) {
    const qreal spread = blurSpread(sigmaOf(shadow));
    const qreal x = outward ? shadow.offset.x() : -shadow.offset.x();
    const qreal y = outward ? shadow.offset.y() : -shadow.offset.y();
    const QMarginsF grown(edges.left() + spread - x, edges.top() + spread - y,
                          edges.right() + spread + x, edges.bottom() + spread + y);
    return atLeast(edges, roundedUp(grown));
}

QMargins uniformMargins(qreal length) {
    return roundedUp(QMarginsF(length, length, length, length));
}

QImage paintShape(const SoftLook &look, const QSize &size, const QMargins &room) {
    QImage image(size.grownBy(room), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QPainterPath path =
        softShape(QRectF(QPointF(room.left(), room.top()), size), look.radius, look.corners);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, look.fill);
    if (look.outlineWidth > 0 && look.outline.alpha() > 0) {
        painter.strokePath(
            path, QPen(look.outline, look.outlineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    }
    return image;
}

CoveragePlane coverageOf(const QImage &image) {
    CoveragePlane plane(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        float *row = plane.row(y);
        for (int x = 0; x < plane.width; ++x) {
            row[x] = static_cast<float>(qAlpha(line[x])) / 255.0F;
        }
    }
    return plane;
}

/// Lays `color`, at the opacity that `shade` gives, under the drawing. Opaque
/// pixels, most of them, are left as they are.
void layUnder(QImage &image, const CoveragePlane &shade, const QColor &color) {
    const std::array<float, 4> parts = {color.redF() * color.alphaF(),
                                        color.greenF() * color.alphaF(),
                                        color.blueF() * color.alphaF(), color.alphaF()};
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        const float *row = shade.row(y);
        for (int x = 0; x < shade.width; ++x) {
            const QRgb top = line[x];
            const float share = row[x] * static_cast<float>(255 - qAlpha(top));
            if (share > 0) {
                const auto part = [&](std::size_t channel) {
                    return static_cast<int>(std::lround(share * parts[channel]));
                };
                line[x] = qRgba(qRed(top) + part(0), qGreen(top) + part(1), qBlue(top) + part(2),
                                qAlpha(top) + part(3));
            }
        }
    }
}

} // namespace

SoftLook SoftLook::scaled(qreal factor) const {
    SoftLook result = *this;
    result.radius *= factor;
    result.outlineWidth *= factor;
    for (SoftShadow &shadow : result.shadows) {
        shadow.blur *= factor;
        shadow.offset *= factor;
    }
    return result;
}

std::size_t qHash(const SoftLook &look, std::size_t seed) {
    const auto &[first, second] = look.shadows;
    return qHashMulti(seed, look.radius, static_cast<int>(look.corners), look.fill.rgba(),
                      look.outline.rgba(), look.outlineWidth, first.color.rgba(), first.blur,
                      first.offset.x(), first.offset.y(), second.color.rgba(), second.blur,
                      second.offset.x(), second.offset.y());
}

SoftReach reachOf(const SoftLook &look, const QSize &size) {
    const qreal halfLine = look.outline.alpha() > 0 ? look.outlineWidth / 2 : 0;
    const qreal corner = cornerReach(size, look.radius, look.corners);
    SoftReach reach{uniformMargins(halfLine), uniformMargins(qMax(corner, halfLine))};
    for (const SoftShadow &shadow : look.shadows) {
        if (casts(shadow)) {
            reach.outward = grownBy(shadow, reach.outward, true);
            reach.inward = grownBy(shadow, reach.inward, false);
        }
    }
    return reach;
}

QImage renderLook(const SoftLook &look, const QSize &size) {
    if (size.isEmpty()) {
        return {};
    }
    QImage image = paintShape(look, size, reachOf(look, size).outward);
    for (const SoftShadow &shadow : look.shadows) {
        if (casts(shadow)) {
            layUnder(image, coverageOf(image).blurred(sigmaOf(shadow), shadow.offset),
                     shadow.color);
        }
    }
    return image;
}

} // namespace tallyview
