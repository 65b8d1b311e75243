#include "tests/shell/ShellFixture.h"

#include <QWheelEvent>

#include <algorithm>

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

    void otherWaysToTheEdge() {
        ShellFixture f(projects(2), {{"sidebarWidth", "500"}});
        QCOMPARE(f.defaults.number("sidebarWidth"), 360.0);
        QQuickItem *handle = f.item("SidebarResizeHandle");
        handle->forceActiveFocus();
        f.press(Qt::Key_Left);
        QCOMPARE(f.layout.sidebarWidth(), 340.0);
        f.press(Qt::Key_Right);
        f.press(Qt::Key_Right);
        QCOMPARE(f.item("SidebarView")->width(), 360.0);
        handle->setProperty("value", 900);
        QCOMPARE(handle->property("value"), 360.0);
        f.defaults.setValue("sidebarWidth", "250");
        QCOMPARE(handle->property("value"), 250.0);
        QTest::mouseDClick(f.window, Qt::LeftButton, {}, f.rect(handle).center().toPoint());
        QCOMPARE(f.item("SidebarView")->width(), 224.0);
        QCOMPARE(f.defaults.number("sidebarWidth"), 224.0);
    }

    void helpAppearsBelowWhatItIsAbout() {
        ShellFixture f(projects(1));
        const QQuickItem *row = f.item("TaskRowView");
        const QRectF chevron(f.rect(row).right() - 42, f.rect(row).top(), 42, 58);
        QTest::mouseMove(f.window, chevron.center().toPoint());
        f.settle();
        const QObject *help = nullptr;
        for (const QObject *child : row->findChildren<QObject *>()) {
            if (child->inherits("QQuickToolTip")) {
                help = child;
            }
        }
        QVERIFY(help);
        QCOMPARE(f.rect(help->property("parent").value<QQuickItem *>()), chevron);
        QTRY_COMPARE(help->property("y"), 58 + 6);
    }

    // The screen of these tests has 800 by 800 points.
    void aScreenTooSmallMovesTheContent() {
        ShellFixture f(projects(2));
        QCOMPARE(f.window->minimumSize(), QSize(736, 730));
        f.window->resize(f.window->minimumSize());
        f.settle();
        const QQuickItem *content = f.item("ContentView");
        const auto rect = [&](const QQuickItem *item) { return f.rect(item); };
        QTRY_COMPARE(rect(content), QRectF(0, 30, 1100, 700));
        QQuickItem *last = f.item("ContinueButton");
        last->forceActiveFocus(Qt::TabFocusReason);
        QTRY_VERIFY(QRectF(0, 0, 736, 730).contains(rect(last)));
        QWheelEvent wheel({300, 300}, {300, 300}, {}, {120, 0}, {}, {}, Qt::NoScrollPhase, false);
        const qreal left = rect(content).x();
        QCoreApplication::sendEvent(f.window, &wheel);
        QTRY_COMPARE(rect(content).x(), std::min(0.0, left + 96));
        f.window->resize(1440, 930);
        QTRY_COMPARE(rect(content), QRectF(0, 30, 1440, 900));
    }

    void theSidebarChoosesWhatShows() {
        std::vector<Sample> samples = projects(15);
        // Long names are cut for the screen and stay distinct.
        samples[0].cwd = "/src/" + std::string(3000, 'a') + "0";
        samples[1].cwd = "/src/" + std::string(3000, 'a') + "1";
        ShellFixture f(samples);
        const auto projects = f.items("ProjectRow");
        QCOMPARE(projects.size(), 12);
        QStringList chosen;
        for (const QQuickItem *row :
             {projects[1], projects[1], projects[10], f.item("AllProjectsRow")}) {
            f.click(row);
            chosen.append(
                QString::fromStdString(f.model.selectedProject().value_or("all")).right(8));
        }
        QCOMPARE(chosen.join(u' '), "aaaaaaa1 all project5 all");

        f.click(projects[10]);
        f.model.setRecencyFilter(TaskRecencyFilter::week);
        const auto shortcuts = f.items("QuickRow"); // today, pinned, archived
        QStringList filters;
        for (const int index : {1, 0, 1, 1, 1, 2}) {
            f.click(shortcuts[index]);
            filters.append(QString::fromStdString(std::string(rawValue(f.model.statusFilter())) +
                                                  " " + f.model.selectedProject().value_or("") +
                                                  " " +
                                                  std::string(rawValue(f.model.recencyFilter()))) +
                           (f.model.pinnedOnly() ? " pinned" : ""));
        }
        QCOMPARE(filters.join(", "), "running project5 week pinned, running project5 today, "
                                     "running project5 today pinned, running project5 today, "
                                     "running project5 today pinned, completed project5 older");
        f.click(f.items("SoftChoice")[1]);
        QCOMPARE(f.defaults.text("appearanceMode"), "dark");
    }

    void theDetailsActOnTheThreadShown() {
        ShellFixture f({{.id = "a b"}, {.id = "c", .age = 1, .archived = true}});
        f.click(f.item("ContinueButton"));
        QCOMPARE(f.opener.opened.join(), "orvik://threads/a%20b");
        f.click(f.button("复制 Thread ID"));
        QCOMPARE(f.pasteboard.text, "a b");
        f.click(f.button("固定任务"));
        QVERIFY(f.model.pinnedIDs().contains("a b"));
        f.click(f.button("取消固定"));
        QVERIFY(f.model.pinnedIDs().empty());
        const QQuickItem *title = f.item("SoftParagraph");
        f.show({{.id = "a b", .title = "Renamed"}, {.id = "c", .age = 1, .archived = true}});
        QCOMPARE(title->property("text"), "Renamed");
        f.model.setSelectedThreadID("c");
        f.settle();
        QCOMPARE(f.texts(f.item("StatusPill")), "已完成");
        f.model.setSelectedThreadID("gone");
        f.settle();
        QVERIFY(f.text("选择一个任务") && !f.item("ContinueButton"));
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
        QCOMPARE(f.item("ThreadIndexView")->width(), 867.0);
        QCOMPARE(f.item("DetailPanelView")->width(), 340.0);
        f.workspace.toggleMode();
        f.settle();
        QVERIFY(f.text("任务动态"));
        QCOMPARE(f.visible(), "0 1 2");
        f.workspace.toggleMode();
        f.settle();
        QCOMPARE(f.items("FocusProjectCard").size(), 3);
        QCOMPARE(f.items("FocusWorkspaceView").size(), 1);
    }

    void aProjectStaysUntilTheBackButton() {
        ShellFixture f(projects(3), {{"dashboardMode", "focus"}});
        f.click(f.items("FocusProjectCard")[1]);
        QVERIFY(!f.text("重置筛选"));
        f.click(f.text("全部"));
        f.click(f.text("重置筛选"));
        QCOMPARE(f.model.statusFilter(), TaskStatusFilter::running);
        QCOMPARE(f.model.selectedProject().value_or(""), "project1");
        f.click(f.button("返回项目列表"));
        QCOMPARE(f.items("FocusProjectCard").size(), 3);
        QVERIFY(!f.model.selectedProject());
    }

    void whatFadesOutKeepsItsState() {
        ShellFixture f(projects(3), {{"dashboardMode", "focus"}}, true);
        f.click(f.items("FocusProjectCard")[2]);
        f.show(projects(2));
        QCOMPARE(f.items("FocusProjectCard").size(), 3 * f.items("FocusProjectGridView").size());
        QTRY_COMPARE(f.items("FocusProjectGridView").size(), 0);
        f.show(projects(3));
        f.workspace.toggleMode();
        QCoreApplication::processEvents();
        // The opened project goes as it was, the standard workspace comes with every project.
        QVERIFY(f.text("project2 · 任务动态"));
        QStringList heights;
        for (const QQuickItem *index : f.items("ThreadList")) {
            heights.append(QString::number(index->property("contentHeight").toDouble()));
        }
        QCOMPARE(heights.join(u' '), "130 266");
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

    void asManyCardsInARowAsFit() {
        ShellFixture f(projects(20), {{"dashboardMode", "focus"}});
        f.window->setProperty("leastWidth", 0);
        // What is left of the window: the sidebar, its edge and the paddings take 292.
        for (const auto &[width, count, cell] :
             {std::tuple(292 + 100, 1, 220.0), std::tuple(292 + 455, 1, 320.0),
              std::tuple(292 + 456, 2, 220.0), std::tuple(1440, 4, 275.0),
              std::tuple(3840, 15, 221.6)}) {
            f.window->resize(width, 900);
            f.settle();
            const auto cards = f.items("FocusProjectCard");
            int inARow = 0;
            while (inARow < cards.size() && f.rect(cards[inARow]).y() == f.rect(cards[0]).y()) {
                ++inARow;
            }
            QCOMPARE(inARow, count);
            QCOMPARE(cards[0]->width(), cell);
            QCOMPARE(f.rect(cards[0]).x(), 262.0);
            QCOMPARE(f.rect(cards[0]).height(), 190.0);
            QCOMPARE(f.rect(cards[inARow]).y() - f.rect(cards[0]).bottom(), 16.0);
        }
    }

    void cardsExistNearTheViewOnly() {
        ShellFixture f(projects(400), {{"dashboardMode", "focus"}});
        const auto shownCards = [&] {
            const auto cards = f.items("FocusProjectCard");
            return QStringList{QString::number(cards.size()),
                               f.texts(cards.first()).section('|', 1, 1),
                               f.texts(cards.last()).section('|', 1, 1)}
                .join(u' ');
        };
        QCOMPARE(shownCards(), "24 project0 project23");
        // The keyboard finds the next row below the view.
        while (f.typeOf(f.window->activeFocusItem()) != "FocusProjectCard") {
            f.press(Qt::Key_Tab);
        }
        for (int card = 0; card < 40; ++card) {
            f.press(Qt::Key_Tab);
        }
        const QQuickItem *focused = f.window->activeFocusItem();
        QCOMPARE(f.texts(focused).section('|', 1, 1), "project40");
        QVERIFY(f.rect(f.item("FocusProjectGrid")).contains(f.rect(focused)));
        f.press(Qt::Key_End);
        QCOMPARE(shownCards(), "21 project40 project399");
        f.press(Qt::Key_Home);
        QCOMPARE(f.window->activeFocusItem(), focused);
    }
};

QTEST_MAIN(ContentViewTest)
#include "ContentViewTest.moc"
