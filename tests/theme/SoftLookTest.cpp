#include "app/theme/SoftLook.h"

#include "app/theme/CoveragePlane.h"

#include <QTest>

#include <cmath>

using namespace tallyview;

class SoftLookTest : public QObject {
    Q_OBJECT

private slots:
    void nothingIsCutOffAtTheEdgeOfThePicture() {
        SoftLook look;
        look.radius = 16;
        look.fill = Qt::white;
        look.shadows = {SoftShadow{Qt::black, 7, {5, 5}}, SoftShadow{Qt::white, 6, {-4, -4}}};
        const QImage image = renderLook(look.scaled(2), {120, 90});
        for (int x = 0; x < image.width(); ++x) {
            QCOMPARE(qAlpha(image.pixel(x, 0)), 0);
            QCOMPARE(qAlpha(image.pixel(x, image.height() - 1)), 0);
        }
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
};

QTEST_GUILESS_MAIN(SoftLookTest)
#include "SoftLookTest.moc"
