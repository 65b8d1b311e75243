#include "app/theme/CoveragePlane.h"
#include "app/theme/SoftPalette.h"
#include "app/theme/SoftPatch.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace tallyview;

namespace {

SoftLook raised(bool dark, qreal radius, qreal strength) {
    const SoftPalette &palette = SoftPalette::of(dark);
    SoftLook look;
    look.radius = radius;
    look.fill = palette.raisedSurface;
    look.outline = palette.rimLight;
    look.outlineWidth = 1;
    if (strength > 0) {
        look.shadows = {
            SoftShadow{palette.softShadowDark, 7 * strength, QPointF(5, 5) * strength},
            SoftShadow{palette.softShadowLight, 6 * strength, QPointF(-4, -4) * strength}};
    }
    return look;
}

/// A patch put together on a picture of `pixels`, with `room` around it.
QImage assembled(const SoftPatch &patch, const QSize &pixels, const QMargins &room, qreal ratio) {
    QImage image(pixels.grownBy(room), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const auto &[target, source] : patch.pieces) {
        const QRectF place(target.topLeft() * ratio + QPointF(room.left(), room.top()),
                           target.size() * ratio);
        painter.drawImage(place.toRect(), patch.image, source.toRect());
    }
    return image;
}

int greatestDifference(const QImage &a, const QImage &b) {
    int greatest = a.size() == b.size() ? 0 : 256;
    for (int y = 0; y < a.height() && greatest < 256; ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            greatest = std::max({greatest, std::abs(qRed(p) - qRed(q)),
                                 std::abs(qBlue(p) - qBlue(q)), std::abs(qAlpha(p) - qAlpha(q))});
        }
    }
    return greatest;
}

} // namespace

class SoftLookTest : public QObject {
    Q_OBJECT

private slots:
    void aPatchEqualsTheWholePicture_data() {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<qreal>("radius");
        QTest::addColumn<qreal>("ratio");
        for (const qreal ratio : {1.0, 1.5, 2.0}) {
            for (const auto &[name, size, radius] : {std::tuple{"card", QSizeF(260, 190), 16.0},
                                                     {"row", QSizeF(501, 58), 11.0},
                                                     {"column", QSizeF(40, 333), 9.0},
                                                     {"button", QSizeF(30, 30), 9.0},
                                                     {"capsule", QSizeF(120, 30), 15.0},
                                                     {"squat", QSizeF(200, 20), 9.0},
                                                     {"square corners", QSizeF(90, 90), 0.0},
                                                     {"tiny", QSizeF(2, 2), 4.0}}) {
                QTest::addRow("%s at %.1f", name, ratio) << size << radius << ratio;
            }
        }
    }
    void aPatchEqualsTheWholePicture() {
        QFETCH(QSizeF, size);
        QFETCH(qreal, radius);
        QFETCH(qreal, ratio);
        const SoftLook look = raised(false, radius, 1);
        const SoftLook pixelLook = look.scaled(ratio);
        const QSize pixels = (size * ratio).toSize();
        const QMargins room = reachOf(pixelLook, pixels).outward;
        const QImage patched = assembled(softPatch(look, size, ratio), pixels, room, ratio);
        QVERIFY(greatestDifference(patched, renderLook(pixelLook, pixels)) <= 1);
    }

    void nothingIsCutOffAtTheEdgeOfThePicture() {
        const QImage image = renderLook(raised(true, 16, 1).scaled(2), {120, 90});
        for (int x = 0; x < image.width(); ++x) {
            QCOMPARE(qAlpha(image.pixel(x, 0)), 0);
            QCOMPARE(qAlpha(image.pixel(x, image.height() - 1)), 0);
        }
    }

    void shadowsLieUnderTheSurface() {
        SoftLook look = raised(false, 0, 0);
        look.outline = Qt::transparent;
        look.fill = QColor::fromRgb(200, 0, 0, 128);
        look.shadows[0] = {QColor::fromRgb(0, 0, 200, 128), 0, {}};
        const QImage image = renderLook(look, {9, 9});
        // Half red over a blue of half the coverage of half red.
        const QColor centre = QColor::fromRgba(qUnpremultiply(image.pixel(4, 4)));
        QCOMPARE(qAbs(qRed(image.pixel(4, 4)) - 100) <= 1, true);
        QCOMPARE(qAbs(qBlue(image.pixel(4, 4)) - 25) <= 1, true);
        QCOMPARE(qAbs(centre.alpha() - 160) <= 1, true);
    }

    void theSecondShadowIsCastByTheFirstToo() {
        SoftLook look;
        look.fill = Qt::black;
        look.shadows = {SoftShadow{Qt::red, 0, {10, 0}}, SoftShadow{Qt::green, 0, {10, 0}}};
        const QImage image = renderLook(look, {10, 10});
        const auto at = [&](int x) { return image.pixelColor(x, image.height() / 2); };
        QCOMPARE(at(5), QColor(Qt::black));
        QCOMPARE(at(15), QColor(Qt::red));
        QCOMPARE(at(25), QColor(Qt::green));
    }

    void blurIsAGaussianOfHalfTheRadius() {
        CoveragePlane plane(81, 81);
        plane.row(40)[40] = 1;
        for (const double sigma : {0.6, 1.5, 3.5, 7.0}) {
            const CoveragePlane blurred = plane.blurred(sigma, {2.5, -3});
            double sum = 0;
            double meanX = 0;
            double squareX = 0;
            double meanY = 0;
            for (int y = 0; y < 81; ++y) {
                for (int x = 0; x < 81; ++x) {
                    const double value = static_cast<double>(blurred.row(y)[x]);
                    sum += value;
                    meanX += value * (x - 40);
                    squareX += value * (x - 40) * (x - 40);
                    meanY += value * (y - 40);
                }
            }
            QVERIFY(std::abs(sum - 1) < 1e-4);
            QVERIFY(std::abs(meanX - 2.5) < 1e-3 && std::abs(meanY + 3) < 1e-3);
            // Moving by half a pixel adds a quarter to the variance.
            QVERIFY(std::abs(squareX - meanX * meanX - sigma * sigma - 0.25) < 1e-2);
        }
    }

    void cornersOfAShape_data() {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<qreal>("radius");
        QTest::addColumn<qreal>("reach");
        QTest::newRow("room to ease") << QSizeF(100, 60) << 10.0 << 15.287;
        QTest::newRow("some room") << QSizeF(100, 24) << 10.0 << 12.0;
        QTest::newRow("capsule") << QSizeF(100, 30) << 15.0 << 15.0;
        QTest::newRow("radius beyond the sides") << QSizeF(20, 30) << 99.0 << 10.0;
        QTest::newRow("none") << QSizeF(20, 30) << 0.0 << 0.0;
    }
    void cornersOfAShape() {
        QFETCH(QSizeF, size);
        QFETCH(qreal, radius);
        QFETCH(qreal, reach);
        QCOMPARE(cornerReach(size, radius, CornerStyle::continuous), reach);
        const QPainterPath shape = softShape(QRectF({3, 4}, size), radius, CornerStyle::continuous);
        QCOMPARE(shape.boundingRect(), QRectF({3, 4}, size));
    }

    void aCapsuleEndsInHalfCircles() {
        const QPainterPath shape = softShape({0, 0, 90, 30}, 15, CornerStyle::continuous);
        for (int degrees = 91; degrees < 270; degrees += 7) {
            const qreal angle = degrees * std::numbers::pi / 180;
            const QPointF direction(std::cos(angle), std::sin(angle));
            QVERIFY(shape.contains(QPointF(15, 15) + direction * 14.95));
            QVERIFY(!shape.contains(QPointF(15, 15) + direction * 15.05));
        }
    }
};

QTEST_MAIN(SoftLookTest)
#include "SoftLookTest.moc"
