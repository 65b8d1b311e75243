#include "app/drawing/SoftPatch.h"

#include <QCache>
#include <QHashFunctions>

#include <algorithm>

namespace tallyview {
namespace {

/// Uniform pixels between the two edges of a stretched side: one to stretch
/// and a neighbour on each side, so that filtering meets no edge.
constexpr int uniformPixels = 3;

constexpr qsizetype cacheBytes = qsizetype(16) * 1024 * 1024;

struct PictureKey {
    SoftLook look;
    QSize size;

    bool operator==(const PictureKey &) const = default;
};

std::size_t qHash(const PictureKey &key, std::size_t seed = 0) {
    return qHashMulti(seed, key.look, key.size.width(), key.size.height());
}

QImage picture(const SoftLook &look, const QSize &size) {
    static QCache<PictureKey, QImage> pictures(cacheBytes);
    const PictureKey key{look, size};
    if (const QImage *known = pictures.object(key)) {
        return *known;
    }
    QImage image = renderLook(look, size);
    pictures.insert(key, new QImage(image), image.sizeInBytes());
    return image;
}

/// The stretches of one side of the surface, in device pixels.
struct Side {
    struct Stretch {
        int target;
        int targetLength;
        int source;
        int sourceLength;
    };

    int length;        ///< of the surface
    int outwardBefore; ///< beyond the surface, as in the picture
    int outwardAfter;
    int inwardBefore;
    int inwardAfter;

    int stretchable() const { return inwardBefore + uniformPixels + inwardAfter; }
    int pictureLength() const { return std::min(length, stretchable()); }

    std::vector<Stretch> stretches() const;
};

std::vector<Side::Stretch> Side::stretches() const {
    const int whole = outwardBefore + pictureLength() + outwardAfter;
    if (length <= stretchable()) {
        return {{-outwardBefore, whole, 0, whole}};
    }
    const int before = outwardBefore + inwardBefore + 1;
    const int after = inwardAfter + 1 + outwardAfter;
    const int middle = length + outwardBefore + outwardAfter - before - after;
    return {{-outwardBefore, before, 0, before},
            {before - outwardBefore, middle, before, 1},
            {before - outwardBefore + middle, after, before + 1, after}};
}

} // namespace

SoftPatch softPatch(const SoftLook &look, const QSizeF &size, qreal pixelRatio) {
    const QSize pixels = (size * pixelRatio).toSize();
    if (pixels.isEmpty()) {
        return {};
    }
    const SoftLook pixelLook = look.scaled(pixelRatio);
    const auto [out, in] = reachOf(pixelLook, pixels);
    const Side across{pixels.width(), out.left(), out.right(), in.left(), in.right()};
    const Side down{pixels.height(), out.top(), out.bottom(), in.top(), in.bottom()};

    SoftPatch patch{picture(pixelLook, {across.pictureLength(), down.pictureLength()}), {}};
    for (const auto &y : down.stretches()) {
        for (const auto &x : across.stretches()) {
            const QRectF target(x.target, y.target, x.targetLength, y.targetLength);
            patch.pieces.push_back(
                {QRectF(target.topLeft() / pixelRatio, target.size() / pixelRatio),
                 QRectF(x.source, y.source, x.sourceLength, y.sourceLength)});
        }
    }
    return patch;
}

SoftPatch centredPatch(const QImage &image, const QSizeF &size, qreal pixelRatio) {
    if (image.isNull()) {
        return {};
    }
    const QSizeF room = (size * pixelRatio - image.size()) / 2;
    const QRectF target(qRound(room.width()), qRound(room.height()), image.width(), image.height());
    return {image,
            {{QRectF(target.topLeft() / pixelRatio, target.size() / pixelRatio),
              QRectF(image.rect())}}};
}

} // namespace tallyview
