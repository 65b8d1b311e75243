#include "app/shell/WindowKeeper.h"

#include "app/platform/IniUserDefaults.h"
#include "app/shell/WindowFrame.h"
#include "app/theme/SoftTheme.h"
#include "tests/shell/ShellFixture.h"

#include <algorithm>
#include <memory>

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

qsizetype pulsingRows(const ShellFixture &f) {
    return std::ranges::count_if(f.items("SoftSymbol"), [](const QQuickItem *symbol) {
        return symbol->property("name") == "waveform.path.ecg" && symbol->opacity() < 1;
    });
}

} // namespace

class WindowKeeperTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void fitsTheScreen() {
        // Two screens side by side, the first with a panel on top.
        const QList<QRect> screens{QRect(0, 30, 1000, 770), QRect(1000, 0, 2000, 1600)};
        const std::pair<QRect, QRect> frames[] = {
            {{0, 30, 1000, 770}, {0, 30, 1000, 770}},
            {{0, 0, 800, 600}, {0, 30, 800, 600}},
            {{-90, 40, 800, 600}, {0, 40, 800, 600}},
            {{100, 500, 800, 600}, {100, 200, 800, 600}},
            {{50, 60, 4000, 3000}, {1000, 0, 2000, 1600}},
            {{-50, 60, 1040, 400}, {0, 60, 1000, 400}},
            {{100, 100, 1, -5}, {100, 100, 300, 200}},
            {{2900, 50, 400, 300}, {2600, 50, 400, 300}},
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
        IniUserDefaults defaults(m_folder->filePath("settings"));
        {
            Kept first(defaults);
            QCOMPARE(first.frame().size(), QSize(500, 400));
            first.window.setGeometry(60, 70, 420, 320);
            QTRY_COMPARE(defaults.stringList("windowFrame"),
                         QStringList({"60", "70", "420", "320"}));
            QSignalSpy resized(&first.window, &QWindow::heightChanged);
            first.window.resize(430, 330);
            QVERIFY(resized.count() || resized.wait());
            QVERIFY(first.window.close()); // at once, before it has settled
        }
        QCOMPARE(Kept(defaults).frame(), QRect(60, 70, 430, 330));
    }

    void remembersNoTitleBar() {
        IniUserDefaults defaults(m_folder->filePath("settings"));
        defaults.setValue("windowFrame", QStringList{"60", "70", "420", "320"});
        Kept kept(defaults);
        kept.chrome.draw();
        const QRect frame = kept.frame();
        QCOMPARE(frame, QRect(60, 70, 420, 320 + kept.chrome.height()));
        kept.window.resize(430, frame.height());
        QTRY_COMPARE(defaults.stringList("windowFrame"), QStringList({"60", "70", "430", "320"}));
        QVERIFY(kept.window.close());
        kept.keeper.present({});
        QCOMPARE(kept.frame().height(), frame.height());
    }

    void remembersThatItWasMaximized() {
        IniUserDefaults defaults(m_folder->filePath("settings"));
        const QRect frame(60, 70, 420, 320);
        {
            Kept first(defaults);
            first.window.setGeometry(frame);
            QTRY_VERIFY(defaults.value("windowFrame").isValid());
            first.window.showMaximized();
            QTRY_COMPARE(defaults.text("windowMaximized"), "true");
            QVERIFY(first.frame().width() > 700);
            QVERIFY(first.window.close());
            first.keeper.present({});
            QCOMPARE(first.window.visibility(), QWindow::Maximized);
        }
        Kept next(defaults);
        QCOMPARE(next.window.visibility(), QWindow::Maximized);
        QCOMPARE(defaults.stringList("windowFrame"), QStringList({"60", "70", "420", "320"}));
        next.window.showNormal();
        QTRY_COMPARE(defaults.text("windowMaximized"), "false");
    }

    void ignoresADamagedFrame() {
        IniUserDefaults defaults(m_folder->filePath("settings"));
        defaults.setValue("windowMaximized", "perhaps");
        for (const char *stored :
             {"", "left", "1 2 300", "1 2 300 300 5", "1 2147483647 300 300", "1 2 300.5 300"}) {
            defaults.setValue("windowFrame", QString(stored).split(u' ', Qt::SkipEmptyParts));
            const Kept kept(defaults);
            QCOMPARE(kept.frame().size(), QSize(500, 400));
            QCOMPARE(kept.window.visibility(), QWindow::Windowed);
        }
    }

    void comesBackFromMinimized() {
        IniUserDefaults defaults(m_folder->filePath("settings"));
        Kept kept(defaults);
        kept.window.showMinimized();
        kept.keeper.present("leave");
        QCOMPARE(kept.window.visibility(), QWindow::Windowed);
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), "leave");
    }

    void hasLeaveWhenItIsShown() {
        IniUserDefaults defaults(m_folder->filePath("settings"));
        QByteArray leave;
        Kept kept(defaults);
        QVERIFY(kept.window.close());
        connect(&kept.window, &QWindow::visibleChanged, &kept.window,
                [&] { leave = qgetenv("XDG_ACTIVATION_TOKEN"); });
        kept.keeper.present("of the click");
        QCOMPARE(leave, "of the click");
    }

    // The menu's keys, the model and the list go on where they were.
    void comesBackAfterItWasClosed() {
        ShellFixture f({{.id = "a", .age = 0}, {.id = "b", .age = 1}, {.id = "c", .age = 2}}, {},
                       true);
        WindowKeeper keeper(*f.window, f.chrome, f.defaults);
        auto *theme = qmlEngine(f.window)->singletonInstance<SoftTheme *>(
            qmlTypeId("Orvik.Tallyview.Theme", 1, 0, "SoftTheme"));
        f.press(Qt::Key_Down);
        QCOMPARE(f.model.selectedThreadID(), "b");
        for (int time = 0; time < 2; ++time) {
            QVERIFY(f.window->close());
            QVERIFY(!f.window->isVisible());
            QTRY_VERIFY(theme->property("still").toBool()); // nothing pulses unseen
            f.ModelFixture::show({{.id = "a", .age = 0},
                                  {.id = "b", .age = 1},
                                  {.id = "c", .age = 2},
                                  {.id = "d" + std::to_string(time), .age = 3}});
            keeper.present({});
            QTRY_VERIFY(!theme->property("still").toBool());
            QVERIFY(QTest::qWaitForWindowActive(f.window));
            f.settle();
        }
        QTRY_COMPARE(pulsingRows(f), 4);
        f.press(Qt::Key_Down);
        QCOMPARE(f.model.selectedThreadID(), "c");
    }
};

QTEST_MAIN(WindowKeeperTest)
#include "WindowKeeperTest.moc"
