#include "app/drawing/CoveragePlane.h"
#include "app/drawing/SoftLook.h"
#include "app/drawing/SymbolImage.h"
#include "app/theme/SoftFont.h"

#include <QFontInfo>
#include <QGlyphRun>
#include <QRawFont>
#include <QTest>
#include <QTextLayout>

#include <cmath>

using namespace tallyview;

namespace {

/// The families whose glyphs are drawn for `text`.
QStringList drawnFamilies(const QString &text, const QFont &font) {
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    QStringList families;
    for (const QGlyphRun &run : layout.glyphRuns()) {
        families << run.rawFont().familyName();
    }
    families.removeDuplicates();
    return families;
}

/// The sum of a picture's opacities in `area`.
qint64 inkOf(const QImage &image, const QRect &area) {
    qint64 ink = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            ink += qAlpha(image.pixel(x, y));
        }
    }
    return ink;
}

} // namespace

/// What is drawn without a window: texts, symbols and looks.
class DrawingTest : public QObject {
    Q_OBJECT

private slots:
    void hanIsDrawnInSimplifiedForms() {
        for (const char *desktopFamily :
             {"Sans", "", "system-ui", "DejaVu Sans", "Noto Sans CJK JP", "Noto Sans CJK TC",
              "Noto Serif CJK KR", "Noto Sans CJK SC", "No Such Face"}) {
            for (const auto design : {SoftFont::System, SoftFont::Rounded, SoftFont::Monospaced}) {
                QFont font;
                font.setFamilies(SoftFont::familiesFor(desktopFamily, design));
                font.setPixelSize(12);
                QCOMPARE(drawnFamilies(QStringLiteral("直骨门复"), font),
                         {QStringLiteral("Noto Sans CJK SC")});
            }
        }
    }

    void emojiAreDrawnInColour() {
        QFont font;
        font.setFamilies(SoftFont::familiesFor(QStringLiteral("Inter"), SoftFont::System));
        QCOMPARE(
            drawnFamilies(QStringLiteral("😀👍🏽🇨🇳👨‍👩‍👧‍👦"), font),
            {QStringLiteral("Noto Color Emoji")});
    }

    void facesAndSizesAreThoseAskedFor() {
        QCOMPARE(SoftFont::familiesFor(QStringLiteral("DejaVu Serif"), SoftFont::System).first(),
                 QStringLiteral("DejaVu Serif"));
        const QFont font = SoftFont::font(9, QFont::Bold, SoftFont::Monospaced);
        QVERIFY(QFontInfo(font).fixedPitch());
        QCOMPARE(font.weight(), QFont::Bold);
        for (const qreal size : {8.0, 11.5, 22.0}) {
            const qreal drawn = QRawFont::fromFont(SoftFont::font(size)).pixelSize();
            QVERIFY(std::abs(drawn - size) <= 0.5);
        }
    }

    void everySymbolIsDrawnWhole() {
        for (const QString &name : SymbolImage::names()) {
            for (const qreal ratio : {1.0, 1.5, 2.0}) {
                const QImage light = SymbolImage{name, 13, QFont::Light, Qt::black}.render(ratio);
                const QImage bold = SymbolImage{name, 13, QFont::Bold, Qt::black}.render(ratio);
                const qint64 ink = inkOf(bold, bold.rect());
                QVERIFY2(inkOf(light, light.rect()) > 255 * 8, qPrintable(name));
                QVERIFY2(inkOf(light, light.rect()) < ink, qPrintable(name));
                QCOMPARE(inkOf(bold, bold.rect().adjusted(1, 1, -1, -1)), ink);
            }
        }
    }

    void inkTakesTheColour() {
        const QColor accent = QColor::fromRgb(41, 97, 232);
        const QImage image = SymbolImage{QStringLiteral("star.fill"), 20, 400, accent}.render(2);
        QCOMPARE(image.pixelColor(image.rect().center()), accent);
    }

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
            for (int i = 0; i < 81 * 81; ++i) {
                const double value = static_cast<double>(blurred.row(i / 81)[i % 81]);
                const double x = i % 81 - 40;
                sum += value;
                meanX += value * x;
                squareX += value * x * x;
                meanY += value * (i / 81 - 40);
            }
            QVERIFY(std::abs(sum - 1) < 1e-4);
            QVERIFY(std::abs(meanX - 2.5) < 1e-3 && std::abs(meanY + 3) < 1e-3);
            // Moving by half a pixel adds a quarter to the variance.
            QVERIFY(std::abs(squareX - meanX * meanX - sigma * sigma - 0.25) < 1e-2);
        }
    }

    void cornersOfAShape() {
        for (const auto &[size, radius, reach] :
             {std::tuple(QSizeF(100, 60), 10.0, 15.287), std::tuple(QSizeF(100, 24), 10.0, 12.0),
              std::tuple(QSizeF(20, 30), 99.0, 10.0), std::tuple(QSizeF(20, 30), 0.0, 0.0)}) {
            QCOMPARE(cornerReach(size, radius, CornerStyle::continuous), reach);
            const auto shape = softShape(QRectF({3, 4}, size), radius, CornerStyle::continuous);
            QCOMPARE(shape.boundingRect(), QRectF({3, 4}, size));
        }
    }
};

QTEST_MAIN(DrawingTest)
#include "DrawingTest.moc"
