#include "app/theme/SymbolImage.h"

#include <QFont>
#include <QTest>

using namespace tallyview;

namespace {

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

bool edgesAreEmpty(const QImage &image) {
    const int last = image.width() - 1;
    for (int i = 0; i <= last; ++i) {
        if (qAlpha(image.pixel(i, 0)) + qAlpha(image.pixel(i, last)) + qAlpha(image.pixel(0, i)) +
                qAlpha(image.pixel(last, i)) !=
            0) {
            return false;
        }
    }
    return true;
}

} // namespace

class SymbolImageTest : public QObject {
    Q_OBJECT

private slots:
    void everySymbolIsDrawnWhole_data() {
        QTest::addColumn<QString>("name");
        for (const char *name : {"arrow.clockwise",
                                 "arrow.right",
                                 "arrow.up.right",
                                 "checkmark",
                                 "chevron.left",
                                 "chevron.right",
                                 "cylinder",
                                 "display",
                                 "doc.on.doc",
                                 "exclamationmark.triangle",
                                 "info.circle",
                                 "line.3.horizontal.decrease.circle",
                                 "magnifyingglass",
                                 "moon",
                                 "rectangle.split.3x1",
                                 "scope",
                                 "sidebar.right",
                                 "sparkles",
                                 "square.grid.2x2",
                                 "star",
                                 "star.fill",
                                 "sun.max",
                                 "waveform.path.ecg"}) {
            QTest::newRow(name) << name;
        }
    }
    void everySymbolIsDrawnWhole() {
        QFETCH(QString, name);
        for (const qreal ratio : {1.0, 1.5, 2.0}) {
            const SymbolImage light{name, 13, QFont::Light, Qt::black};
            const SymbolImage bold{name, 13, QFont::Bold, Qt::black};
            QVERIFY(inkOf(light.render(ratio)) > 255 * 10);
            QVERIFY(inkOf(light.render(ratio)) < inkOf(bold.render(ratio)));
            QVERIFY(edgesAreEmpty(bold.render(ratio)));
        }
    }

    void inkTakesTheColour() {
        const QColor accent = QColor::fromRgb(41, 97, 232);
        const QImage image = SymbolImage{QStringLiteral("star.fill"), 20, 400, accent}.render(2);
        QCOMPARE(image.pixelColor(image.rect().center()), accent);
    }

    void unknownNamesDrawNothing() {
        QVERIFY(SymbolImage({QStringLiteral("grid"), 12, 400, Qt::black}).render(1).isNull());
        QVERIFY(SymbolImage({QString(), 12, 400, Qt::black}).render(1).isNull());
    }
};

QTEST_MAIN(SymbolImageTest)
#include "SymbolImageTest.moc"
