#include "app/shell/WindowChrome.h"

#include "tests/shell/ShellFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

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

class WindowChromeTest : public QObject {
    Q_OBJECT

private slots:
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
            {"maximize:close", "最大化 Orvik Tallyview 关闭"},
            {"appmenu", "Orvik Tallyview"}};
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

QTEST_MAIN(WindowChromeTest)
#include "WindowChromeTest.moc"
