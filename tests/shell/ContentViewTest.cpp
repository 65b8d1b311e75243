#include "tests/shell/ShellFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

std::vector<Sample> projects(int count) {
    std::vector<Sample> samples;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        samples.push_back(
            {.id = number, .age = i, .cwd = "/src/project" + number, .title = "Task of " + number});
    }
    return samples;
}

/// The widths of the columns, the handle among them.
QString columns(const ShellFixture &f) {
    QStringList widths;
    for (const char *type :
         {"SidebarView", "SidebarResizeHandle", "ThreadIndexView", "DetailPanelView"}) {
        widths.append(QString::number(f.item(type)->width()));
    }
    return widths.join(u' ');
}

/// The edge of the sidebar, held by the pointer.
struct Drag {
    explicit Drag(const ShellFixture &fixture)
        : f(fixture)
        , start(f.rect(f.item("SidebarResizeHandle")).center().toPoint()) {
        QTest::mousePress(f.window, Qt::LeftButton, {}, start);
    }
    double by(int distance) const {
        QTest::mouseMove(f.window, start + QPoint(distance, 5));
        return f.item("SidebarView")->width();
    }
    void end(int distance) const {
        QTest::mouseRelease(f.window, Qt::LeftButton, {}, start + QPoint(distance, 5));
    }

    const ShellFixture &f;
    QPoint start;
};

} // namespace

class ContentViewTest : public QObject {
    Q_OBJECT

private slots:
    void theColumnsStandAsStored() {
        const ShellFixture first(projects(2));
        QCOMPARE(columns(first), "224 8 867 340");
        const ShellFixture damaged(projects(2), {{"sidebarWidth", "150"}});
        QCOMPARE(columns(damaged), "200 8 891 340");
        QCOMPARE(damaged.defaults.number("sidebarWidth"), 200.0);
    }

    void theEdgeStaysUnderThePointer() {
        ShellFixture f(projects(2));
        const Drag drag(f);
        QCOMPARE(drag.by(0), 224.0);
        QCOMPARE(drag.by(40), 264.0);
        QCOMPARE(f.defaults.number("sidebarWidth"), 264.0);
        QCOMPARE(drag.by(300), 360.0);
        QCOMPARE(drag.by(200), 360.0);
        QCOMPARE(drag.by(130), 354.0);
        QCOMPARE(drag.by(-100), 200.0);
        drag.end(-100);
        QCOMPARE(Drag(f).by(10), 210.0);
    }

    void aDoubleClickRestoresTheWidth() {
        ShellFixture f(projects(2), {{"sidebarWidth", "300"}});
        QTest::mouseDClick(f.window, Qt::LeftButton, {},
                           f.rect(f.item("SidebarResizeHandle")).center().toPoint());
        QCOMPARE(f.item("SidebarView")->width(), 224.0);
        QCOMPARE(f.defaults.number("sidebarWidth"), 224.0);
    }

    void assistiveTechnologyAdjustsInSteps() {
        ShellFixture f(projects(2), {{"sidebarWidth", "340"}});
        QQuickItem *handle = f.item("SidebarResizeHandle");
        handle->forceActiveFocus();
        f.press(Qt::Key_Right);
        f.press(Qt::Key_Right);
        QCOMPARE(f.layout.sidebarWidth(), 360.0);
        handle->setProperty("value", 900);
        QCOMPARE(handle->property("value"), 360.0);
        f.defaults.setValue("sidebarWidth", "250");
        QCOMPARE(handle->property("value"), 250.0);
    }

    void theWorkspaceFollowsTheStoredMode() {
        ShellFixture f(projects(3));
        f.model.setSelectedProject("project1");
        f.defaults.setValue("dashboardMode", "focus");
        f.settle();
        QCOMPARE(f.items("FocusProjectCard").size(), 3);
        f.click(f.items("FocusProjectCard")[2]);
        QVERIFY(f.text("project2 · 任务动态"));
        QCOMPARE(f.visible(), "2");
        QCOMPARE(columns(f), "224 8 867 340");
        f.workspace.toggleMode();
        f.settle();
        QVERIFY(f.text("任务动态"));
        QCOMPARE(f.visible(), "0 1 2");
        f.workspace.toggleMode();
        f.settle();
        QCOMPARE(f.items("FocusProjectCard").size(), 3);
        QCOMPARE(f.items("FocusWorkspaceView").size(), 1);
    }

    void theBackButtonReturnsToTheGrid() {
        ShellFixture f(projects(3), {{"dashboardMode", "focus"}});
        f.click(f.items("FocusProjectCard")[1]);
        const auto buttons = f.items("SoftIconButton");
        const auto back = std::find_if(buttons.begin(), buttons.end(), [](const QQuickItem *item) {
            return item->property("label") == "返回项目列表";
        });
        QVERIFY(back != buttons.end());
        f.click(*back);
        QCOMPARE(f.items("FocusProjectCard").size(), 3);
        QVERIFY(!f.model.selectedProject());
    }

    void whatFadesOutKeepsItsState() {
        ShellFixture f(projects(3), {{"dashboardMode", "focus"}}, true);
        f.click(f.items("FocusProjectCard")[2]);
        QTRY_COMPARE(f.items("FocusProjectGridView").size(), 0);
        f.workspace.toggleMode();
        QCoreApplication::processEvents();
        // The opened project goes as it was, the standard workspace comes with every project.
        QVERIFY(f.text("project2 · 任务动态"));
        QStringList counts;
        for (const QQuickItem *index : f.items("ThreadList")) {
            counts.append(QString::number(index->property("contentHeight").toDouble()));
        }
        QCOMPARE(counts.join(u' '), "130 266");
        QTRY_COMPARE(f.items("ThreadList").size(), 1);
        QVERIFY(!f.text("project2 · 任务动态"));
    }

    void tabReachesEveryControl() {
        ShellFixture f(projects(2));
        QStringList reached;
        const QQuickItem *first = nullptr;
        do {
            f.press(Qt::Key_Tab);
            const QQuickItem *item = f.window->activeFocusItem();
            first = first ? first : item;
            reached.append(f.typeOf(item));
            const bool hasMark =
                item->inherits("QQuickTextInput") || reached.last() == "SidebarResizeHandle";
            QVERIFY2(hasMark || f.items("SoftFocusRing").size() == 1, qPrintable(reached.last()));
        } while (reached.size() < 30 &&
                 f.window->activeFocusItem()->nextItemInFocusChain() != first);
        QVERIFY(f.matches(reached.join(u' '),
                          "SoftIconButton AllProjectsRow QuickRow QuickRow QuickRow ProjectRow "
                          "ProjectRow SoftChoice SoftChoice SoftChoice SidebarResizeHandle "
                          "SoftIconButton SoftChoice SoftChoice SoftChoice QQuickTextInput "
                          "RecencyCapsule RecencyCapsule RecencyCapsule RecencyCapsule "
                          "QQuickAbstractButton QQuickAbstractButton QQuickAbstractButton "
                          "QQuickAbstractButton SoftIconButton SoftIconButton ContinueButton"));
    }

    void theKeyboardGoesOnInWhatReplacesIt() {
        ShellFixture f(projects(2), {{"dashboardMode", "focus"}});
        while (f.typeOf(f.window->activeFocusItem()) != "FocusProjectCard") {
            f.press(Qt::Key_Tab);
        }
        f.press(Qt::Key_Space);
        QVERIFY(f.text("project0 · 任务动态"));
        QCOMPARE(f.window->activeFocusItem()->property("label"), "返回项目列表");
        f.press(Qt::Key_Space);
        QCOMPARE(f.typeOf(f.window->activeFocusItem()), "FocusProjectCard");
    }

    void asManyCardsInARowAsFit_data() {
        QTest::addColumn<int>("window");
        QTest::addColumn<int>("inARow");
        QTest::addColumn<double>("cell");
        // What is left of the window: the sidebar, its edge and the paddings take 292.
        QTest::newRow("1") << 292 + 400 << 1 << 320.0;
        QTest::newRow("narrower than a cell") << 292 + 100 << 1 << 220.0;
        QTest::newRow("just two") << 292 + 456 << 2 << 220.0;
        QTest::newRow("almost two") << 292 + 455 << 1 << 320.0;
        QTest::newRow("usual") << 1440 << 4 << 275.0;
        QTest::newRow("wide") << 3840 << 15 << 221.6;
    }
    void asManyCardsInARowAsFit() {
        ShellFixture f(projects(20), {{"dashboardMode", "focus"}});
        QFETCH(int, window);
        f.window->setMinimumSize({});
        f.window->resize(window, 900);
        f.settle();
        const auto cards = f.items("FocusProjectCard");
        int inARow = 0;
        while (inARow < cards.size() && cards[inARow]->y() == 0) {
            ++inARow;
        }
        QTEST(inARow, "inARow");
        QTEST(cards[0]->width(), "cell");
        QCOMPARE(f.rect(cards[0]).x(), 262.0);
        QCOMPARE(f.rect(cards[0]).height(), 190.0);
        QCOMPARE(f.rect(cards[inARow]).y() - f.rect(cards[0]).bottom(), 16.0);
    }
};

QTEST_MAIN(ContentViewTest)
#include "ContentViewTest.moc"
