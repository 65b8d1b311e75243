#include "app/drawing/SymbolImage.h"

#include <QFile>
#include <QMap>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace tallyview {
namespace {

constexpr qreal iconGrid = 16; ///< units along an icon's edge
constexpr qreal boxPerPoint = 1.15;

/// The icon drawn for each system symbol.
const QMap<QString, QString> &icons() {
    static const QMap<QString, QString> map = {
        {QStringLiteral("arrow.clockwise"), QStringLiteral("arrow-clockwise")},
        {QStringLiteral("arrow.down.right.and.arrow.up.left"),
         QStringLiteral("arrows-angle-contract")},
        {QStringLiteral("arrow.right"), QStringLiteral("arrow-right")},
        {QStringLiteral("arrow.up.right"), QStringLiteral("arrow-up-right")},
        {QStringLiteral("checkmark"), QStringLiteral("check-lg")},
        {QStringLiteral("chevron.left"), QStringLiteral("chevron-left")},
        {QStringLiteral("chevron.right"), QStringLiteral("chevron-right")},
        {QStringLiteral("cylinder"), QStringLiteral("database")},
        {QStringLiteral("display"), QStringLiteral("display")},
        {QStringLiteral("doc.on.doc"), QStringLiteral("files")},
        {QStringLiteral("exclamationmark.triangle"), QStringLiteral("exclamation-triangle")},
        {QStringLiteral("info.circle"), QStringLiteral("info-circle")},
        {QStringLiteral("line.3.horizontal.decrease.circle"), QStringLiteral("filter-circle")},
        {QStringLiteral("magnifyingglass"), QStringLiteral("search")},
        {QStringLiteral("minus"), QStringLiteral("dash-lg")},
        {QStringLiteral("moon"), QStringLiteral("moon")},
        {QStringLiteral("rectangle.split.3x1"), QStringLiteral("layout-three-columns")},
        {QStringLiteral("scope"), QStringLiteral("bullseye")},
        {QStringLiteral("sidebar.right"), QStringLiteral("layout-sidebar-reverse")},
        {QStringLiteral("sparkles"), QStringLiteral("stars")},
        {QStringLiteral("square"), QStringLiteral("square")},
        {QStringLiteral("square.grid.2x2"), QStringLiteral("grid")},
        {QStringLiteral("star"), QStringLiteral("star")},
        {QStringLiteral("star.fill"), QStringLiteral("star-fill")},
        {QStringLiteral("sun.max"), QStringLiteral("sun")},
        {QStringLiteral("waveform.path.ecg"), QStringLiteral("activity")},
        {QStringLiteral("xmark"), QStringLiteral("x-lg")},
    };
    return map;
}

/// Width of the line, in units of the icon's grid, that thickens an icon drawn
/// for the light weight to `weight`.
qreal strokeWidth(int weight) { return std::clamp((weight - 300) / 400.0, 0.0, 1.0) * 0.7; }

QByteArray thickened(QByteArray svg, int weight) {
    svg.replace("currentColor", "black");
    const qreal stroke = strokeWidth(weight);
    if (stroke > 0) {
        svg.replace("<svg ", "<svg stroke=\"black\" stroke-linejoin=\"round\" stroke-width=\"" +
                                 QByteArray::number(stroke) + "\" ");
    }
    return svg;
}

QByteArray source(const QString &name) {
    const QString icon = icons().value(name);
    QFile file(QStringLiteral(":/orvik/tallyview/symbols/%1.svg").arg(icon));
    return !icon.isEmpty() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

QStringList SymbolImage::names() { return icons().keys(); }

qreal SymbolImage::boxEdge(qreal size) { return 2 * std::round(boxPerPoint * size / 2); }

int SymbolImage::margin(qreal pixelRatio) const {
    return static_cast<int>(std::ceil(boxEdge(size) * pixelRatio / iconGrid)) + 1;
}

QImage SymbolImage::render(qreal pixelRatio) const {
    QSvgRenderer renderer(thickened(source(name), weight));
    const int edge = qRound(boxEdge(size) * pixelRatio);
    if (!renderer.isValid() || edge <= 0) {
        return {};
    }
    const int room = margin(pixelRatio);
    QImage image(edge + 2 * room, edge + 2 * room, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(room, room, edge, edge));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

} // namespace tallyview
