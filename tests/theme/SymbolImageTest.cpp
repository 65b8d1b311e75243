#include "app/theme/SymbolImage.h"

#include <QFont>
#include <QTest>

using namespace tallyview;

namespace {

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

class SymbolImageTest : public QObject {
    Q_OBJECT

private slots:
    void everySymbolIsDrawnWhole() {
        for (const QString &name : SymbolImage::names()) {
            for (const qreal ratio : {1.0, 1.5, 2.0}) {
                const QImage light = SymbolImage{name, 13, QFont::Light, Qt::black}.render(ratio);
                const QImage bold = SymbolImage{name, 13, QFont::Bold, Qt::black}.render(ratio);
                const qint64 ink = inkOf(bold, bold.rect());
                QVERIFY2(inkOf(light, light.rect()) > 255 * 10, qPrintable(name));
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
};

QTEST_MAIN(SymbolImageTest)
#include "SymbolImageTest.moc"
