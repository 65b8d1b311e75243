#include "app/theme/SoftFont.h"

#include <QFontDatabase>
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
    void initTestCase() {
        if (!QFontDatabase::hasFamily(QStringLiteral("Noto Sans CJK SC"))) {
            QFAIL("Noto Sans CJK is not installed: scripts/install-dependencies installs it");
        }
    }

    void hanIsDrawnInSimplifiedForms_data() {
        QTest::addColumn<QString>("desktopFamily");
        for (const char *family :
             {"Sans", "", "system-ui", "DejaVu Sans", "Inter", "Noto Sans CJK JP",
              "Noto Sans CJK TC", "Noto Serif CJK KR", "Noto Sans CJK SC", "No Such Face"}) {
            QTest::newRow(family) << family;
        }
    }
    void hanIsDrawnInSimplifiedForms() {
        QFETCH(QString, desktopFamily);
        for (const auto design : {SoftFont::System, SoftFont::Rounded, SoftFont::Monospaced}) {
            QFont font;
            font.setFamilies(SoftFont::familiesFor(desktopFamily, design));
            font.setPixelSize(12);
            QCOMPARE(font.families().last(), QStringLiteral("Noto Sans CJK SC"));
            QCOMPARE(drawnFamilies(QStringLiteral("直骨门复"), font),
                     {QStringLiteral("Noto Sans CJK SC")});
        }
    }

    void aFaceThePersonChoseIsKept() {
        QCOMPARE(SoftFont::familiesFor(QStringLiteral("DejaVu Serif"), SoftFont::System).first(),
                 QStringLiteral("DejaVu Serif"));
    }

    void monospacedIsMonospaced() {
        const QFont font = SoftFont::font(9, QFont::Bold, SoftFont::Monospaced);
        QVERIFY(QFontInfo(font).fixedPitch());
        QCOMPARE(font.weight(), QFont::Bold);
    }

    void sizesArePointsOfTheScreen_data() {
        QTest::addColumn<qreal>("size");
        QTest::newRow("8") << 8.0;
        QTest::newRow("11.5") << 11.5;
        QTest::newRow("22") << 22.0;
    }
    void sizesArePointsOfTheScreen() {
        QFETCH(qreal, size);
        const qreal drawn = QRawFont::fromFont(SoftFont::font(size)).pixelSize();
        QVERIFY(std::abs(drawn - size) <= 0.5);
    }
};

QTEST_MAIN(SoftFontTest)
#include "SoftFontTest.moc"
