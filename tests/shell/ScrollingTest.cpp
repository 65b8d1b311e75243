#include "tests/shell/ShellFixture.h"

#include <QWheelEvent>

#include <algorithm>
#include <memory>

using namespace tallyview;
using namespace tallyview::test;

namespace {

/// Forty projects, each with a thread whose details are longer than the least window.
std::vector<Sample> projects() {
    std::vector<Sample> samples = lately(40);
    for (Sample &sample : samples) {
        sample.cwd = "/src/project" + sample.id;
        sample.title = std::string(400, 'x');
    }
    return samples;
}

struct Scene : ShellFixture {
    Scene(const QString &mode, const char *name, bool motion = false)
        : ShellFixture(projects(), {{"dashboardMode", mode}}, motion)
        , type(name) {
        window->resize(1100, 730);
        settle();
    }
    QQuickItem *view() const { return item(type); }
    double top() const { return view()->property("contentY").toDouble(); }
    double lowest() const {
        return view()->property("contentHeight").toDouble() - view()->height();
    }
    QPoint middle() const { return rect(view()).center().toPoint(); }
    void turn(QPoint pixels, QPoint angle, Qt::ScrollPhase phase = Qt::NoScrollPhase) const {
        QWheelEvent wheel(middle(), middle(), pixels, angle, {}, {}, phase, false);
        QCoreApplication::sendEvent(window, &wheel);
    }

    const char *type;
};

} // namespace

class ScrollingTest : public QObject {
    Q_OBJECT

private slots:
    void allFourScrollAlike_data() {
        QTest::addColumn<QString>("mode");
        QTest::newRow("ThreadList") << "standard";
        QTest::newRow("ThreadDetailView") << "standard";
        QTest::newRow("ProjectNavigationView") << "standard";
        QTest::newRow("FocusProjectGrid") << "focus";
    }
    void allFourScrollAlike() {
        QFETCH(const QString, mode);
        Scene f(mode, QTest::currentDataTag());
        const double lowest = f.lowest();
        QVERIFY(lowest > 60);
        const auto below = [&](double top) { return std::clamp(top, 0.0, lowest); };

        f.turn({}, {0, -120});
        QCOMPARE(f.top(), below(96));
        f.turn({}, {0, 1200});
        QCOMPARE(f.top(), 0.0);
        f.turn({0, -7}, {0, -84});
        QCOMPARE(f.top(), 7.0);
        f.turn({}, {}, Qt::ScrollBegin);
        f.turn({0, -10}, {0, -120}, Qt::ScrollUpdate);
        f.turn({}, {0, -5}, Qt::ScrollUpdate); // less than a pixel
        QCOMPARE(f.top(), 17.0);
        f.turn({0, -20}, {0, -240}, Qt::ScrollMomentum);
        f.turn({}, {}, Qt::ScrollEnd);
        QCOMPARE(f.top(), 37.0);

        const double page = std::round(0.9 * f.view()->height());
        f.view()->forceActiveFocus();
        for (const auto &[key, top] : {std::pair(Qt::Key_Home, 0.0),
                                       {Qt::Key_PageDown, below(page)},
                                       {Qt::Key_PageUp, 0.0},
                                       {Qt::Key_End, lowest},
                                       {Qt::Key_Home, 0.0}}) {
            f.press(key);
            QCOMPARE(f.top(), top);
        }
        // The knob, and the track below it.
        const QRectF area = f.rect(f.view());
        const double room =
            area.height() - f.rect(f.view()->findChild<QQuickItem *>("knob")).height() - 3;
        const QPoint grip = area.topRight().toPoint() + QPoint(-8, 20);
        QTest::mousePress(f.window, Qt::LeftButton, {}, grip);
        QTest::mouseMove(f.window, grip + QPoint(0, 10));
        QVERIFY(std::abs(f.top() - 10 / room * lowest) <= 1);
        QTest::mouseMove(f.window, grip);
        QTest::mouseRelease(f.window, Qt::LeftButton, {}, grip);
        QCOMPARE(f.top(), 0.0);
        QTest::mouseClick(f.window, Qt::LeftButton, {},
                          area.bottomRight().toPoint() - QPoint(8, 20));
        QCOMPARE(f.top(), below(page));
        f.press(Qt::Key_Home);

        const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
        const auto touch = [&] { return QTest::touchEvent(f.window, screen.get()); };
        touch().press(0, f.middle());
        for (int step = 1; step <= 4; ++step) {
            QTest::qWait(20);
            touch().move(0, f.middle() - QPoint(0, step * 25));
        }
        touch().release(0, f.middle() - QPoint(0, 100));
        const double dragged = f.top();
        QVERIFY(dragged > 15);
        QTRY_VERIFY2(f.top() > std::min(dragged + 10, lowest - 1), "it goes on by itself");
        QTRY_VERIFY(!f.view()->property("moving").toBool());

        f.click(f.items("QQuickMenuBarItem")[1]);
        const double top = f.top();
        f.turn({}, {0, 120});
        f.turn({0, 7}, {});
        QVERIFY2(f.top() == top, "nothing scrolls under a menu");
        f.press(Qt::Key_Escape);
        f.turn({0, 7}, {0, 84});
        QCOMPARE(f.top(), top - 7);
        QTest::mousePress(f.window, Qt::LeftButton, {}, f.middle());
        for (int step = 1; step <= 4; ++step) {
            QTest::mouseMove(f.window, f.middle() - QPoint(0, step * 50));
        }
        QTest::mouseRelease(f.window, Qt::LeftButton, {}, f.middle() - QPoint(0, 200));
        QVERIFY2(f.top() == top - 7, "a mouse does not drag the content");

        f.refresh();
        f.settle();
        QCOMPARE(f.top(), top - 7);
        f.toggleMode();
        f.toggleMode();
        QCOMPARE(f.top(), top - 7);
    }

    void aGlideLetsTheHandTakeOver() {
        Scene f("standard", "ThreadList", true);
        const auto startGlide = [&f] {
            QTest::qWait(300);
            f.view()->setProperty("contentY", 0);
            QTest::keyClick(f.window, Qt::Key_PageDown);
            const bool starts = QTest::qWaitFor([&f] { return f.top() > 0; });
            return starts && f.top() < 0.7 * f.view()->height();
        };
        QTRY_VERIFY(startGlide());
        const double before = f.top();
        f.turn({0, -3}, {0, -36});
        QVERIFY(f.top() < before + 100);
        QTRY_VERIFY(startGlide());
        QTest::mousePress(f.window, Qt::LeftButton, {}, f.middle());
        const double held = f.top();
        QTest::qWait(250);
        QCOMPARE(f.top(), held);
    }

    void aPlaceOutlivesALookElsewhere() {
        Scene grid("focus", "FocusProjectGrid");
        grid.turn({0, -300}, {});
        grid.workspace.focusProject()->open("project1");
        grid.settle();
        grid.workspace.focusProject()->close();
        grid.settle();
        QCOMPARE(grid.top(), 300.0);

        Scene list("standard", "ThreadList");
        list.turn({0, -500}, {});
        for (const char *query : {"x", "", "finds nothing", ""}) {
            list.model.setQuery(query);
            list.settle();
            if (!list.items("ThreadList").isEmpty()) {
                QCOMPARE(list.top(), *query ? 0.0 : 500.0);
            }
        }
        list.click(list.text("全部"));
        QCOMPARE(list.top(), 0.0);
        list.click(list.text("进行中"));
        QCOMPARE(list.top(), 500.0);
    }
};

QTEST_MAIN(ScrollingTest)
#include "ScrollingTest.moc"
