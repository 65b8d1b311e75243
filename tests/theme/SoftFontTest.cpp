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

} // namespace

class SoftFontTest : public QObject {
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
};

QTEST_MAIN(SoftFontTest)
#include "SoftFontTest.moc"
