#include "app/drawing/SoftSurface.h"

#include "app/drawing/SoftPatch.h"
#include "app/theme/SoftPalette.h"

#include <QPainter>
#include <QQuickWindow>
#include <QTest>

#include <cmath>
#include <numeric>

using namespace tallyview;

namespace {

/// Of two pictures of one size, over all bytes.
int greatestDifference(const QImage &a, const QImage &b) {
    const auto greater = [](int x, int y) { return std::max(x, y); };
    const auto difference = [](int x, int y) { return std::abs(x - y); };
    return std::transform_reduce(a.constBits(), a.constBits() + a.sizeInBytes(), b.constBits(), 0,
                                 greater, difference);
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
            surface.setProperty("radius", radius);
            surface.setProperty("fill", look.fill);
            surface.setProperty("outline", look.outline);
            surface.darkShadow()->setProperty("color", look.shadows[0].color);
            surface.darkShadow()->setProperty("blur", 6);
            surface.darkShadow()->setProperty("x", 3);
            surface.darkShadow()->setProperty("y", 3);
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
