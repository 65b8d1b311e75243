#include "app/drawing/SoftSurface.h"

#include "app/drawing/SoftPatch.h"
#include "app/theme/SoftPalette.h"

#include <QPainter>
#include <QQuickWindow>
#include <QTest>

#include <cmath>

using namespace tallyview;

namespace {

int greatestDifference(const QImage &a, const QImage &b) {
    int greatest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            greatest = std::max(greatest, std::abs(qGreen(a.pixel(x, y)) - qGreen(b.pixel(x, y))));
        }
    }
    return greatest;
}

/// The whole picture of a look, painted at its place in a window.
QImage painted(const SoftLook &look, const QRectF &place, const QQuickWindow &window) {
    const qreal ratio = window.effectiveDevicePixelRatio();
    const SoftLook pixelLook = look.scaled(ratio);
    const QSize pixels = (place.size() * ratio).toSize();
    const QMargins out = reachOf(pixelLook, pixels).outward;
    QImage image((QSizeF(window.size()) * ratio).toSize(), QImage::Format_RGB32);
    image.fill(window.color());
    QPainter painter(&image);
    painter.drawImage(qRound(place.x() * ratio) - out.left(), qRound(place.y() * ratio) - out.top(),
                      renderLook(pixelLook, pixels));
    return image;
}

void set(QObject &object, const QVariantMap &properties) {
    for (const auto &[name, value] : properties.asKeyValueRange()) {
        object.setProperty(qPrintable(name), value);
    }
}

} // namespace

/// What a window shows of a surface, put together from a small patch.
class SoftSurfaceTest : public QObject {
    Q_OBJECT

private slots:
    void theWindowShowsTheWholePicture() {
        const std::pair<QRectF, int> cases[] = {{{30, 30, 301, 58}, 11},  {{31, 33, 300, 57}, 11},
                                                {{30, 30, 260, 190}, 16}, {{30, 30, 120, 30}, 15},
                                                {{30, 30, 90, 90}, 0},    {{30, 30, 2, 2}, 4}};
        for (const auto &[place, radius] : cases) {
            SoftLook look;
            look.radius = radius;
            look.fill = SoftPalette::of(false, false).raisedSurface;
            look.outline = SoftPalette::of(false, false).hairline;
            look.outlineWidth = 1;
            look.shadows[0] = {SoftPalette::of(false, false).softShadowDark, 6, {3, 3}};
            QQuickWindow window;
            window.setColor(SoftPalette::of(false, false).canvas);
            window.resize(400, 280);
            SoftSurface surface(window.contentItem());
            surface.setPosition(place.topLeft());
            surface.setSize(place.size());
            set(surface, {{"radius", radius}, {"fill", look.fill}, {"outline", look.outline}});
            set(*surface.darkShadow(),
                {{"color", look.shadows[0].color}, {"blur", 6}, {"x", 3}, {"y", 3}});
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            const QImage shown = window.grabWindow().convertToFormat(QImage::Format_RGB32);
            const QImage expected = painted(look, place, window);
            QCOMPARE(shown.size(), expected.size());
            QVERIFY2(greatestDifference(shown, expected) <= 2, "the pictures differ");
        }
    }
};

QTEST_MAIN(SoftSurfaceTest)
#include "SoftSurfaceTest.moc"
