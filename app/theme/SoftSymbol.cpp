#include "app/theme/SoftSymbol.h"

#include <QCache>
#include <QHashFunctions>

namespace tallyview {
namespace {

struct PictureKey {
    SymbolImage symbol;
    qreal pixelRatio;

    bool operator==(const PictureKey &) const = default;
};

std::size_t qHash(const PictureKey &key, std::size_t seed = 0) {
    const SymbolImage &symbol = key.symbol;
    return qHashMulti(seed, symbol.name, symbol.size, symbol.weight, symbol.color.rgba(),
                      key.pixelRatio);
}

QImage picture(const SymbolImage &symbol, qreal pixelRatio) {
    static QCache<PictureKey, QImage> pictures(500);
    const PictureKey key{symbol, pixelRatio};
    if (const QImage *known = pictures.object(key)) {
        return *known;
    }
    QImage image = symbol.render(pixelRatio);
    pictures.insert(key, new QImage(image));
    return image;
}

/// `image` in the middle of an item of `size` points, on whole device pixels of
/// the item.
SoftPatch centred(const QImage &image, const QSizeF &size, qreal pixelRatio) {
    if (image.isNull()) {
        return {};
    }
    const QSizeF room = (size * pixelRatio - image.size()) / 2;
    const QRectF target(qRound(room.width()), qRound(room.height()), image.width(), image.height());
    return {image,
            {{QRectF(target.topLeft() / pixelRatio, target.size() / pixelRatio),
              QRectF(image.rect())}}};
}

} // namespace

SoftSymbol::SoftSymbol(QQuickItem *parent) : PatchItem(parent) {
    connect(this, &SoftSymbol::symbolChanged, this, &SoftSymbol::takeSymbol);
}

void SoftSymbol::componentComplete() {
    QQuickItem::componentComplete();
    takeSymbol();
}

void SoftSymbol::takeSymbol() {
    const qreal edge = SymbolImage::boxEdge(m_size);
    setImplicitSize(edge, edge);
    polish();
}

SoftPatch SoftSymbol::makePatch(qreal pixelRatio) const {
    return centred(picture({m_name, m_size, m_weight, m_color}, pixelRatio), size(), pixelRatio);
}

} // namespace tallyview
