#include "app/shell/WindowKeeper.h"

#include "app/shell/WindowFrame.h"
#include "app/theme/SoftTheme.h"
#include "tests/shell/ShellFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

constexpr QSize minimum(300, 200);

/// A window of its own with its keeper; the screen of these tests has 800 by 800 points.
struct Kept {
    explicit Kept(UserDefaults &defaults) : layout(defaults), keeper(window, chrome, defaults) {
        chrome.setWindow(window);
        window.setMinimumSize(minimum);
        window.resize(500, 400);
        keeper.present({});
    }
    QRect frame() const { return window.geometry(); }

    QWindow window;
    ChosenAppearance system;
    LayoutSettings layout;
    WindowAppearance appearance{layout, system};
    WindowChrome chrome{appearance, system};
    WindowKeeper keeper;
};

QString frameIn(const UserDefaults &defaults) {
    return defaults.stringList("windowFrame").value_or(QStringList()).join(u' ');
}

} // namespace

class WindowKeeperTest : public QObject {
    Q_OBJECT

private slots:

    void fitsTheScreen() {
        // Two screens side by side, the first with a panel on top.
        const QList<QRect> screens{QRect(0, 30, 1000, 770), QRect(1000, 0, 2000, 1600)};
        const std::pair<QRect, QRect> frames[] = {
            {{0, 30, 1000, 770}, {0, 30, 1000, 770}},
            {{0, 0, 800, 600}, {0, 30, 800, 600}},
            {{-90, 40, 800, 600}, {0, 40, 800, 600}},
            {{100, 500, 800, 600}, {100, 200, 800, 600}},
            {{50, 60, 4000, 3000}, {1000, 0, 2000, 1600}},
            {{100, 100, 1, -5}, {100, 100, 300, 200}},
            {{700, 50, 800, 300}, {1000, 50, 800, 300}},
            {{5000, 50, 400, 300}, {600, 50, 400, 300}},
        };
        for (const auto &[frame, fitted] : frames) {
            QCOMPARE(fittedFrame(frame, minimum, screens), fitted);
            QCOMPARE(fittedFrame(frame, minimum, {}), frame);
        }
        QCOMPARE(fittedFrame({1, 2, 3, 4}, minimum, {QRect(7, 8, 9, 10)}), QRect({7, 8}, minimum));
    }

    void remembersWhereItStood() {
        MemoryDefaults defaults;
        {
            Kept first(defaults);
            QCOMPARE(first.frame().size(), QSize(500, 400));
            first.window.setGeometry(60, 70, 420, 320);
            QTRY_COMPARE(frameIn(defaults), "60 70 420 320");
            QSignalSpy resized(&first.window, &QWindow::heightChanged);
            first.window.resize(430, 330);
            QVERIFY(resized.count() || resized.wait());
            QVERIFY(first.window.close()); // at once, before it has settled
        }
        Kept next(defaults);
        QCOMPARE(next.frame(), QRect(60, 70, 430, 330));
        next.window.showMaximized();
        QTRY_COMPARE(defaults.text("windowMaximized"), "true");
        QVERIFY(next.frame().width() > 700);
        QVERIFY(next.window.close());
        next.keeper.present({});
        QCOMPARE(next.window.visibility(), QWindow::Maximized);
        Kept last(defaults);
        QCOMPARE(last.window.visibility(), QWindow::Maximized);
        QCOMPARE(frameIn(defaults), "60 70 430 330");
        last.window.showNormal();
        QTRY_COMPARE(defaults.text("windowMaximized"), "false");
    }

    void remembersNoTitleBar() {
        MemoryDefaults defaults;
        defaults.setValue("windowFrame", QStringList{"60", "70", "420", "320"});
        Kept kept(defaults);
        kept.chrome.draw();
        const int height = 320 + kept.chrome.height();
        QCOMPARE(kept.frame(), QRect(60, 70, 420, height));
        kept.window.resize(430, height);
        QTRY_COMPARE(frameIn(defaults), "60 70 430 320");
        QVERIFY(kept.window.close());
        kept.keeper.present({});
        QCOMPARE(kept.frame().height(), height);
    }

    void ignoresADamagedFrame() {
        MemoryDefaults defaults;
        defaults.setValue("windowMaximized", "perhaps");
        for (const char *stored :
             {"", "left", "1 2 300", "1 2 300 300 5", "1 2147483647 300 300", "1 2 300.5 300"}) {
            defaults.setValue("windowFrame", QString(stored).split(u' ', Qt::SkipEmptyParts));
            const Kept kept(defaults);
            QCOMPARE(kept.frame().size(), QSize(500, 400));
            QCOMPARE(kept.window.visibility(), QWindow::Windowed);
        }
    }

    void comesBackWithLeave() {
        MemoryDefaults defaults;
        QByteArray leave; // as soon as it shows; outlives the window, which hides when it goes
        Kept kept(defaults);
        kept.window.showMinimized();
        kept.keeper.present("first");
        QCOMPARE(kept.window.visibility(), QWindow::Windowed);
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), "first");
        QVERIFY(kept.window.close());
        connect(&kept.window, &QWindow::visibleChanged, &kept.window,
                [&] { leave = qgetenv("XDG_ACTIVATION_TOKEN"); });
        kept.keeper.present("second");
        QCOMPARE(leave, "second");
    }

    // The menu's keys, the model and the list go on where they were.
    void comesBackAfterItWasClosed() {
        ShellFixture f(lately(3), {}, true);
        WindowKeeper keeper(*f.window, f.chrome, f.defaults);
        auto *theme = qmlEngine(f.window)->singletonInstance<SoftTheme *>(
            qmlTypeId("Orvik.Tallyview.Theme", 1, 0, "SoftTheme"));
        f.press(Qt::Key_Down);
        QCOMPARE(f.selected(), "1");
        for (int time = 0; time < 2; ++time) {
            QVERIFY(f.window->close());
            QVERIFY(!f.window->isVisible());
            QTRY_VERIFY(theme->property("still").toBool()); // nothing pulses unseen
            f.ModelFixture::show(lately(4 + time));
            keeper.present({});
            QTRY_VERIFY(!theme->property("still").toBool());
            QVERIFY(QTest::qWaitForWindowActive(f.window));
            f.settle();
        }
        QTRY_COMPARE(f.pulses(), "11111");
        f.press(Qt::Key_Down);
        QCOMPARE(f.selected(), "2");
    }
};

QTEST_MAIN(WindowKeeperTest)
#include "WindowKeeperTest.moc"
