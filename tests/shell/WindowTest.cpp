#include "app/shell/WindowFrame.h"
#include "app/shell/WindowKeeper.h"
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

/// The window on a shell that leaves the frame to it, small enough for the screen of these tests.
struct Framed : ShellFixture {
    Framed() : ShellFixture({{.id = "a"}}) {
        window->setProperty("leastWidth", 500);
        window->setProperty("leastHeight", 300);
        chrome.draw();
        settle();
    }

    /// The title bar's texts and buttons from left to right.
    QString titleBar() const {
        QMap<qreal, QString> pieces{{rect(text("Orvik Tallyview")).x(), "Orvik Tallyview"}};
        for (const QQuickItem *button : items("SoftIconButton")) {
            if (item("TitleBar")->isAncestorOf(button)) {
                pieces[rect(button).x()] = button->property("label").toString();
            }
        }
        return QStringList(pieces.values()).join(u' ');
    }
    QPoint title() const { return rect(text("Orvik Tallyview")).center().toPoint(); }
};

} // namespace

/// The window's place and its frame.
class WindowTest : public QObject {
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
        for (const char *stored : {"", "left", "1 2 300", "1 2 300 300 5", "1 2147483647 300 300",
                                   "-2147483648 2 300 300", "1 2 300.5 300"}) {
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

    void theFrameFollowsTheState() {
        const ShellFixture shell({{.id = "a"}});
        QVERIFY(!shell.item("TitleBar") && !shell.item("WindowRim"));
        QCOMPARE(shell.window->size(), QSize(1440, 930));

        const Framed f;
        QCOMPARE(f.rect(f.item("AppMenuBar")), QRectF(0, 38, 1440, 30));
        QCOMPARE(f.rect(f.item("ContentView")), QRectF(0, 68, 1440, 900));
        QCOMPARE(f.window->minimumSize(), QSize(500, 368));
        QVERIFY(f.window->flags().testFlag(Qt::FramelessWindowHint));
        const std::tuple<Qt::WindowStates, bool, bool> cases[] = {
            {Qt::WindowMaximized, true, false},
            {Qt::WindowFullScreen | Qt::WindowMaximized, false, false},
            {Qt::WindowNoState, true, true}};
        for (const auto &[states, hasTitleBar, hasRim] : cases) {
            f.window->setWindowStates(states);
            f.settle();
            QCOMPARE(f.item("TitleBar") != nullptr, hasTitleBar);
            QCOMPARE(f.item("WindowRim") != nullptr, hasRim);
            const QRect window(QPoint(), f.window->size());
            QCOMPARE(f.rect(f.item("ContentView")),
                     window.adjusted(0, hasTitleBar ? 68 : 30, 0, 0));
        }
    }

    void theDesktopChoosesTheButtons() {
        Framed f;
        QCOMPARE(f.titleBar(), "Orvik Tallyview 最小化 最大化 关闭");
        const std::pair<const char *, const char *> cases[] = {
            {"close,minimize:appmenu", "关闭 最小化 Orvik Tallyview"},
            {"icon:minimize, maximize ,spacer,close", "Orvik Tallyview 最小化 最大化 关闭"},
            {"close,close:maximize,close", "关闭 Orvik Tallyview 最大化"},
            {":", "Orvik Tallyview"}};
        for (const auto &[layout, shown] : cases) {
            f.system.setWindowButtons(layout);
            f.settle();
            QCOMPARE(f.titleBar(), shown);
        }
    }

    void everyWayToAState() {
        const Framed f;
        f.click(f.button("最大化"));
        QCOMPARE(f.window->visibility(), QWindow::Maximized);
        f.click(f.button("还原"));
        QCOMPARE(f.window->visibility(), QWindow::Windowed);
        QTest::mouseDClick(f.window, Qt::LeftButton, {}, f.title());
        QCOMPARE(f.window->visibility(), QWindow::Maximized);
        QTest::mouseClick(f.window, Qt::RightButton, {}, f.title());
        QTRY_COMPARE(f.items("SoftMenuItem").size(), 3);
        f.click(f.items("SoftMenuItem")[0]);
        QCOMPARE(f.window->visibility(), QWindow::Windowed);
        f.click(f.button("最小化"));
        QCOMPARE(f.window->visibility(), QWindow::Minimized);
        f.window->showNormal();
        f.click(f.button("关闭"));
        QVERIFY(!f.window->isVisible());
    }

    void theKeyboardReachesTheButtonsFirst() {
        const Framed f;
        f.window->contentItem()->forceActiveFocus();
        for (const char *label : {"最小化", "最大化", "关闭", "切换到专注模式"}) {
            f.press(Qt::Key_Tab);
            QCOMPARE(f.window->activeFocusItem(), f.button(label));
        }
        f.press(Qt::Key_Backtab);
        f.press(Qt::Key_Backtab);
        f.press(Qt::Key_Space);
        QCOMPARE(f.window->visibility(), QWindow::Maximized);
        QCOMPARE(f.window->activeFocusItem(), f.button("还原"));
    }
};

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
