#include "app/theme/SoftLook.h"

#include "app/theme/CoveragePlane.h"

#include <QHashFunctions>
#include <QPainter>

#include <cmath>
#include <optional>

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
        for (int x = 0; x < image.width(); ++x) {
            row[x] = static_cast<float>(qAlpha(line[x])) / 255.0F;
        }
    }
    return plane;
}

/// A shadow ready to be laid under a drawing: its opacity at each pixel.
struct CastShadow {
    CoveragePlane opacity;
    QColor color;
};

std::optional<CastShadow> cast(const SoftShadow &shadow, const CoveragePlane &caster) {
    if (!casts(shadow)) {
        return std::nullopt;
    }
    CastShadow result{caster.blurred(sigmaOf(shadow), shadow.offset), shadow.color};
    for (float &value : result.opacity.values) {
        value *= shadow.color.alphaF();
    }
    return result;
}

/// The coverage of a drawing together with a shadow under it.
void layUnder(CoveragePlane &coverage, const CastShadow &shadow) {
    for (std::size_t i = 0; i < coverage.values.size(); ++i) {
        coverage.values[i] += shadow.opacity.values[i] * (1 - coverage.values[i]);
    }
}

/// `color`, premultiplied with an opacity of `share` (0 to 255), under `top`.
QRgb over(QRgb top, const QColor &color, float share) {
    const auto part = [share](float component) {
        return static_cast<int>(share * component + 0.5F);
    };
    return qRgba(qRed(top) + part(color.redF()), qGreen(top) + part(color.greenF()),
                 qBlue(top) + part(color.blueF()), qAlpha(top) + part(1));
}

void layUnder(QImage &image, const CastShadow &shadow) {
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        const float *opacity = shadow.opacity.row(y);
        for (int x = 0; x < image.width(); ++x) {
            const float share = opacity[x] * static_cast<float>(255 - qAlpha(line[x]));
            line[x] = over(line[x], shadow.color, share);
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
    CoveragePlane coverage = coverageOf(image);
    for (const SoftShadow &shadow : look.shadows) {
        if (const auto under = cast(shadow, coverage)) {
            layUnder(coverage, *under);
            layUnder(image, *under);
        }
    }
    return image;
}

} // namespace tallyview
