#include "app/drawing/CoveragePlane.h"
#include "app/drawing/SoftLook.h"
#include "app/drawing/SymbolImage.h"
#include "app/theme/SoftFont.h"
#include "app/theme/SoftPalette.h"

#include <QFontInfo>
#include <QGlyphRun>
#include <QRawFont>
#include <QTest>
#include <QTextLayout>

#include <cmath>

using namespace tallyview;

namespace {

/// The families whose glyphs are drawn for `text` where the desktop's family is `family`.
QStringList drawnFamilies(const QString &text, const QString &family, SoftFont::Design design) {
    QFont font;
    font.setFamilies(SoftFont::familiesFor(family, design));
    font.setPixelSize(12);
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    QStringList families;
    for (const QGlyphRun &run : layout.glyphRuns()) {
        families.append(run.rawFont().familyName());
    }
    families.removeDuplicates();
    return families;
}

QColor over(const QColor &ground, const QColor &color, float opacity = 1) {
    const float part = color.alphaF() * opacity;
    const auto mixed = [part](float below, float above) { return below + part * (above - below); };
    return QColor::fromRgbF(mixed(ground.redF(), color.redF()),
                            mixed(ground.greenF(), color.greenF()),
                            mixed(ground.blueF(), color.blueF()));
}

/// How much lighter one colour is than the other, from 1 to 21, as accessibility guidelines have
/// it.
double contrast(const QColor &one, const QColor &other) {
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF()) + 0.05;
    };
    const double ratio = luminance(one) / luminance(other);
    return std::max(ratio, 1 / ratio);
}

/// The sum of a picture's opacities.
qint64 inkOf(const QImage &image) {
    qint64 ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ink += qAlpha(image.pixel(x, y));
        }
    }
    return ink;
}

qint64 inkAtEdges(const QImage &image) {
    return inkOf(image) - inkOf(image.copy(image.rect().adjusted(1, 1, -1, -1)));
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
                QCOMPARE(drawnFamilies("直骨门复", desktopFamily, design),
                         QStringList("Noto Sans CJK SC"));
            }
        }
    }

    void emojiAreDrawnInColour() {
        QCOMPARE(drawnFamilies("😀👍🏽🇨🇳👨‍👩‍👧‍👦", "Inter",
                               SoftFont::System),
                 QStringList("Noto Color Emoji"));
    }

    void facesAndSizesAreThoseAskedFor() {
        QCOMPARE(SoftFont::familiesFor("DejaVu Serif", SoftFont::System).first(), "DejaVu Serif");
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
                QVERIFY2(inkOf(light) > 255 * 8 && inkOf(light) < inkOf(bold), qPrintable(name));
                QCOMPARE(inkAtEdges(bold), 0);
            }
        }
    }

    void inkTakesTheColour() {
        const QColor accent(41, 97, 232);
        const QImage image = SymbolImage{"star.fill", 20, 400, accent}.render(2);
        QCOMPARE(image.pixelColor(image.rect().center()), accent);
    }

    void nothingIsCutOffAtTheEdgeOfThePicture() {
        SoftLook look;
        look.radius = 16;
        look.fill = Qt::white;
        look.shadows = {SoftShadow{Qt::black, 7, {5, 5}}, SoftShadow{Qt::white, 6, {-4, -4}}};
        QCOMPARE(inkAtEdges(renderLook(look.scaled(2), {120, 90})), 0);
    }

    void theSecondShadowIsCastByTheFirstToo() {
        SoftLook look;
        look.fill = Qt::black;
        look.shadows = {SoftShadow{Qt::red, 0, {10, 0}}, SoftShadow{Qt::green, 0, {10, 0}}};
        const QImage image = renderLook(look, {10, 10});
        for (const auto &[x, color] : {std::pair(5, Qt::black), {15, Qt::red}, {25, Qt::green}}) {
            QCOMPARE(image.pixelColor(x, image.height() / 2), QColor(color));
        }
    }

    void blurIsAGaussianOfHalfTheRadius() {
        CoveragePlane plane(81, 81);
        plane.row(40)[40] = 1;
        for (const double sigma : {0.6, 1.5, 3.5, 7.0}) {
            const CoveragePlane blurred = plane.blurred(sigma, {2.5, -3});
            double sum = 0, x = 0, y = 0, xx = 0;
            for (int i = 0; i < 81 * 81; ++i) {
                const double value = static_cast<double>(blurred.values[i]);
                sum += value;
                x += value * (i % 81 - 40);
                y += value * (i / 81 - 40);
                xx += value * (i % 81 - 40) * (i % 81 - 40);
            }
            QVERIFY(std::abs(sum - 1) < 1e-4 && std::abs(x - 2.5) < 1e-3 && std::abs(y + 3) < 1e-3);
            // Moving by half a pixel adds a quarter to the variance.
            QVERIFY(std::abs(xx - x * x - sigma * sigma - 0.25) < 1e-2);
        }
        QCOMPARE(cornerReach({2, 60}, 2, CornerStyle::circular), 2.0);
        const auto narrow = softShape({0, 0, 2, 60}, 2, CornerStyle::circular);
        QVERIFY2(!narrow.contains({0.2, 0.7}), "its corners are ellipses");
    }

    void highContrastIsHigh() {
        for (const bool dark : {false, true}) {
            const SoftPalette p = SoftPalette::of(dark, true);
            QVERIFY(contrast(p.accent, p.accentInk) >= 4.5);
            // The code of the chosen project while its row is pressed.
            const QColor pressed =
                over(over(p.raisedSurface, p.accent, 0.09F), p.primaryInk, 0.06F);
            QVERIFY(contrast(over(pressed, p.accent, 0.16F), p.accent) >= 4.5);
            for (const QColor &ground :
                 {p.canvas, p.raisedSurface, p.insetSurface, p.liftedSurface,
                  over(p.raisedSurface, p.accent, 0.16F), over(p.raisedSurface, p.running, 0.1F)}) {
                for (const QColor &ink : {p.primaryInk, p.secondaryInk, p.mutedInk, p.running,
                                          over(ground, p.accent, 0.78F)}) {
                    QVERIFY2(contrast(ground, ink) >= 4.5, qPrintable(ground.name() + ink.name()));
                }
                for (const QColor &mark : {p.hairline, p.rimLight, p.warning, p.knobFill}) {
                    QVERIFY2(contrast(ground, over(ground, mark)) >= 3, qPrintable(mark.name()));
                }
            }
        }
    }
};

QTEST_MAIN(DrawingTest)
#include "DrawingTest.moc"
