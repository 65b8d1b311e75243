#include "app/drawing/SoftSymbol.h"

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
    return centredPatch(picture({m_name, m_size, m_weight, m_color}, pixelRatio), size(),
                        pixelRatio);
}

} // namespace tallyview
