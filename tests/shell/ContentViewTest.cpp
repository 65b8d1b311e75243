#include "tests/shell/ShellFixture.h"

#include <QWheelEvent>

#include <algorithm>

using namespace tallyview;
using namespace tallyview::test;

namespace {

std::vector<Sample> projects(int count) {
    std::vector<Sample> samples = lately(count);
    for (Sample &sample : samples) {
        sample.cwd = "/src/project" + sample.id;
    }
    return samples;
}

void tabToCard(const ShellFixture &f) {
    while (f.typeOf(f.window->activeFocusItem()) != "FocusProjectCard") {
        f.press(Qt::Key_Tab);
    }
}

} // namespace

class ContentViewTest : public QObject {
    Q_OBJECT

private slots:
    void theEdgeStaysUnderThePointer() {
        ShellFixture f(projects(2));
        const QQuickItem *handle = f.item("SidebarResizeHandle");
        QPoint start = f.rect(handle).center().toPoint();
        QTest::mousePress(f.window, Qt::LeftButton, {}, start);
        const std::pair<int, double> widths[] = {{1, 225},   {0, 224},   {40, 264},  {300, 360},
                                                 {200, 360}, {130, 354}, {-100, 200}};
        for (const auto &[distance, width] : widths) {
            QTest::mouseMove(f.window, start + QPoint(distance, 5));
            QCOMPARE(f.item("SidebarView")->width(), width);
        }
        QCOMPARE(f.defaults.number("sidebarWidth"), 200.0);
        QTest::mouseRelease(f.window, Qt::LeftButton, {}, start + QPoint(-100, 5));
        for (const double width : {210.0, 220.0}) { // the same way twice
            start = f.rect(handle).center().toPoint();
            QTest::mousePress(f.window, Qt::LeftButton, {}, start);
            QTest::mouseMove(f.window, start + QPoint(5, 0));
            QTest::mouseMove(f.window, start + QPoint(10, 0));
            QTest::mouseRelease(f.window, Qt::LeftButton, {}, start + QPoint(10, 0));
            QCOMPARE(f.item("SidebarView")->width(), width);
        }
    }

    void theSearchFieldStaysWideEnoughToTypeIn() {
        ShellFixture f(projects(2), {{"sidebarWidth", "360"}});
        f.window->resize(1100, 730);
        const QQuickItem *field = f.item("SearchField");
        QTRY_COMPARE(field->width(), 143.0);
        QVERIFY(!f.rect(f.item("StatusControl")).intersects(f.rect(field)));
        QVERIFY(!f.text("⌘ K"));
    }

    void otherWaysToTheEdge() {
        ShellFixture f(projects(2), {{"sidebarWidth", "500"}});
        QCOMPARE(f.defaults.number("sidebarWidth"), 360.0);
        QQuickItem *handle = f.item("SidebarResizeHandle");
        handle->forceActiveFocus();
        f.press(Qt::Key_Left);
        QCOMPARE(f.layout.sidebarWidth(), 340.0);
        f.press(Qt::Key_Space);
        QCOMPARE(f.layout.sidebarWidth(), 224.0);
        handle->setProperty("value", 340);
        f.press(Qt::Key_Right);
        f.press(Qt::Key_Right);
        QCOMPARE(f.item("SidebarView")->width(), 360.0);
        handle->setProperty("value", 900);
        QCOMPARE(handle->property("value"), 360.0);
        f.defaults.setValue("sidebarWidth", "250");
        QCOMPARE(handle->property("value"), 250.0);
        QTest::mouseDClick(f.window, Qt::LeftButton, {}, f.rect(handle).center().toPoint());
        QCOMPARE(f.item("SidebarView")->width(), 224.0);
    }

    void helpAppearsBelowWhatItIsAbout() {
        ShellFixture f(projects(1));
        const QRectF row = f.rect(f.item("TaskRowView"));
        const QRectF chevron(row.right() - 42, row.top(), 42, 58);
        QTest::mouseMove(f.window, chevron.center().toPoint());
        QTRY_VERIFY(f.text("在 Orvik 中打开"));
        const QPointF text = f.rect(f.text("在 Orvik 中打开")).center();
        QCOMPARE(qRound(text.x()), qRound(chevron.center().x()));
        QVERIFY(text.y() > chevron.bottom() + 6 && text.y() < chevron.bottom() + 36);
    }

    void whatHasLeftTheWindowNeedsNoHelp() {
        ShellFixture f(projects(1), {{"dashboardMode", "focus"}});
        QQuickItem *card = f.item("FocusProjectCard");
        QTest::mouseMove(f.window, f.rect(card).center().toPoint());
        QTRY_VERIFY(card->property("hovered").toBool());
        QTest::qWait(600);
        card->setParentItem(nullptr);
        QThread::msleep(200); // the tip's 700 are over before the card learns that it has gone
        QCoreApplication::processEvents();
    }

    // The screen of these tests has 800 by 800 points.
    void aScreenTooSmallMovesTheContent() {
        ShellFixture f(projects(2));
        QCOMPARE(f.window->minimumSize(), QSize(736, 730));
        f.window->resize(f.window->minimumSize());
        f.settle();
        const QQuickItem *content = f.item("ContentView");
        QTRY_COMPARE(f.rect(content), QRectF(0, 30, 1100, 700));
        QQuickItem *last = f.item("ContinueButton");
        last->forceActiveFocus(Qt::TabFocusReason);
        QTRY_VERIFY(QRectF(0, 0, 736, 730).contains(f.rect(last)));
        QWheelEvent wheel({300, 300}, {300, 300}, {}, {120, 0}, {}, {}, Qt::NoScrollPhase, false);
        const qreal left = f.rect(content).x();
        QCoreApplication::sendEvent(f.window, &wheel);
        QTRY_COMPARE(f.rect(content).x(), std::min(0.0, left + 96));
        f.window->resize(1440, 930);
        QTRY_COMPARE(f.rect(content), QRectF(0, 30, 1440, 900));
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
             {projects[1], projects[1], f.item("AllProjectsRow"), projects[10]}) {
            f.click(row);
            chosen.append(QString(f.model.selectedProject().value_or("all").c_str()).right(8));
        }
        QCOMPARE(chosen.join(u' '), "aaaaaaa1 all all project5");
        QVERIFY(projects[10]->property("checked").toBool());
        f.model.setSelectedProject("project6");
        f.settle();
        QVERIFY2(!projects[10]->property("checked").toBool(), "not by a press");

        f.model.setRecencyFilter(TaskRecencyFilter::week);
        const auto shortcuts = f.items("QuickRow"); // today, pinned, archived
        std::string filters;
        for (const int index : {1, 0, 1, 1, 1, 2}) {
            f.click(shortcuts[index]);
            filters += std::string(rawValue(f.model.statusFilter())) + " " +
                       std::string(rawValue(f.model.recencyFilter())) +
                       (f.model.pinnedOnly() ? " pinned, " : ", ");
        }
        QCOMPARE(filters, "running week pinned, running today, running today pinned, "
                          "running today, running today pinned, completed older, ");
        QVERIFY(f.model.selectedProject());
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
        f.select("c");
        QCOMPARE(f.texts(f.item("StatusPill")), "已完成");
        f.select("gone");
        QVERIFY(f.text("选择一个任务") && !f.item("ContinueButton"));
    }

    void propertiesStandOnEvenLines() {
        ShellFixture f({{.id = "Latin", .cwd = "/src/汉字", .title = "标题"}});
        QSet<int> steps;
        qreal before = 0;
        for (const QQuickItem *row : f.items("PropertyRow")) {
            const QQuickItem *label = row->childItems().first();
            const qreal line = f.rect(label).y() + label->baselineOffset();
            steps.insert(before > 0 ? qRound(line - before) : 30);
            before = line;
        }
        QCOMPARE(steps, QSet<int>{30});
    }

    void whatIsCopiedIsWhatIsStored() {
        const QString path = "/a\u3000b/" + QString("xy").repeated(3000);
        ShellFixture f({{.id = "a", .cwd = path.toStdString()}});
        // The directory shows its beginning, with a blank and an ellipsis.
        QQuickItem *row = f.items("PropertyRow")[7];
        QQuickItem *text = row->childItems()[1];
        QVERIFY(text->property("text").toString().startsWith("/a b/"));
        const int length = int(text->property("text").toString().size());
        const std::tuple<int, int, QString> cases[] = {
            {0, 0, path}, {1, 4, "a\u3000b"}, {5, length, path.mid(5)}, {0, length, path}};
        text->forceActiveFocus();
        for (const auto &[start, end, copied] : cases) {
            QMetaObject::invokeMethod(text, "select", Q_ARG(int, start), Q_ARG(int, end));
            QTest::keyClick(f.window, Qt::Key_C, Qt::ControlModifier);
            QCOMPARE(f.pasteboard.text, copied);
        }
        row->forceActiveFocus(Qt::TabFocusReason);
        f.press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(f.pasteboard.text, path);
        f.press(Qt::Key_Home, Qt::ControlModifier);
        f.press(Qt::Key_Right, Qt::ShiftModifier);
        f.press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(f.pasteboard.text, "/");
    }

    void theWorkspaceFollowsTheStoredMode() {
        ShellFixture f(projects(3));
        f.model.setSelectedProject("project1");
        f.defaults.setValue("dashboardMode", "focus");
        f.settle();
        f.click(f.items("FocusProjectCard")[2]);
        QVERIFY(f.text("project2 · 任务动态") && !f.text("重置筛选"));
        QCOMPARE(f.visible(), "2");
        QCOMPARE(f.item("ThreadIndexView")->width(), 867.0);
        f.click(f.text("全部"));
        f.click(f.text("重置筛选"));
        QCOMPARE(f.model.statusFilter(), TaskStatusFilter::running);
        QCOMPARE(f.visible(), "2");
        f.click(f.button("返回项目列表"));
        QCOMPARE(f.items("FocusProjectCard").size(), 3);
        QVERIFY(!f.model.selectedProject());
        f.click(f.items("FocusProjectCard")[1]);
        f.toggleMode();
        QVERIFY(f.text("任务动态"));
        QCOMPARE(f.visible(), "0 1 2");
        f.toggleMode();
        QCOMPARE(f.items("FocusProjectCard").size(), 3);
        QCOMPARE(f.items("FocusWorkspaceView").size(), 1);
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
        const auto lists = f.items("ThreadList");
        QCOMPARE(lists.size(), 2);
        QCOMPARE(lists[0]->property("contentHeight"), 130.0);
        QCOMPARE(lists[1]->property("contentHeight"), 266.0);
        QTRY_COMPARE(f.items("ThreadList").size(), 1);
        QVERIFY(!f.text("project2 · 任务动态"));
    }

    void tabReachesEveryControl() {
        ShellFixture f(projects(2));
        QStringList reached;
        while (reached.size() < 36) {
            f.press(Qt::Key_Tab);
            reached.append(f.typeOf(f.window->activeFocusItem()));
            const bool hasMark =
                reached.last() == "QQuickTextInput" || reached.last() == "SidebarResizeHandle";
            QVERIFY2(hasMark || f.items("SoftFocusRing").size() == 1, qPrintable(reached.last()));
        }
        const QQuickItem *next = f.window->activeFocusItem()->nextItemInFocusChain();
        QVERIFY2(next == f.item("SoftIconButton"), "around again");
        QCOMPARE(reached.join(u' '),
                 "SoftIconButton AllProjectsRow QuickRow QuickRow QuickRow ProjectRow ProjectRow "
                 "SoftChoice SoftChoice SoftChoice SidebarResizeHandle SoftIconButton SoftChoice "
                 "SoftChoice SoftChoice QQuickTextInput RecencyCapsule RecencyCapsule "
                 "RecencyCapsule RecencyCapsule QQuickAbstractButton QQuickAbstractButton "
                 "QQuickAbstractButton QQuickAbstractButton SoftIconButton SoftIconButton "
                 "ContinueButton" +
                     QString(" PropertyRow").repeated(9));
    }

    void theKeyboardGoesOnInWhatReplacesIt() {
        ShellFixture f(projects(2), {{"dashboardMode", "focus"}});
        tabToCard(f);
        f.press(Qt::Key_Space);
        QVERIFY(f.text("project0 · 任务动态"));
        QCOMPARE(f.window->activeFocusItem()->property("label"), "返回项目列表");
        f.press(Qt::Key_Space);
        QCOMPARE(f.typeOf(f.window->activeFocusItem()), "FocusProjectCard");
    }

    void roundedCornersAreNotPressed() {
        for (const auto &[mode, type] :
             {std::pair("standard", "ProjectRow"), std::pair("focus", "FocusProjectCard")}) {
            ShellFixture f(projects(2), {{"dashboardMode", mode}});
            const QPoint corner = f.rect(f.item(type)).topLeft().toPoint();
            QTest::mouseClick(f.window, Qt::LeftButton, {}, corner + QPoint(1, 1));
            QVERIFY(!f.model.selectedProject());
            QTest::mouseClick(f.window, Qt::LeftButton, {}, corner + QPoint(16, 1));
            QVERIFY(f.model.selectedProject());
        }
    }

    void asManyCardsInARowAsFit() {
        ShellFixture f(projects(20), {{"dashboardMode", "focus"}});
        f.window->setProperty("leastWidth", 0);
        // What is left of the window: the sidebar, its edge and the paddings take 292.
        const std::tuple<int, int, double> rows[] = {
            {292 + 100, 1, 220}, {292 + 455, 1, 320}, {292 + 456, 2, 220}, {3840, 15, 222}};
        for (const auto &[width, count, cell] : rows) {
            f.window->resize(width, 900);
            f.settle();
            const auto cards = f.items("FocusProjectCard");
            const QRectF first = f.rect(cards[0]);
            QCOMPARE(first, QRectF(262, first.y(), cell, 190));
            const QRectF last = f.rect(cards[count - 1]);
            QCOMPARE(last.y(), first.y());
            QVERIFY(count < 15 || last.right() == width - 30);
            QVERIFY(count == 1 || f.rect(cards[1]).left() == first.right() + 16);
            QCOMPARE(f.rect(cards[count]).y(), first.bottom() + 16);
        }
    }

    void whateverTheirScriptTextsStandAlike() {
        const QStringList names = {"Fix", "修复", 'Z' + QString(32, QChar(0x301))};
        std::vector<Sample> samples;
        for (const QString &text : names) {
            const std::string name = text.toStdString();
            samples.push_back({.id = name, .cwd = "/src/" + name, .title = name});
        }
        ShellFixture f(samples);
        QSet<int> lines;
        for (const QQuickItem *text : f.items("SoftText")) {
            QVERIFY(!text->property("truncated").toBool());
            if (names.contains(text->property("text").toString()) &&
                f.typeOf(text->parentItem()) != "SoftSurface") {
                lines << qRound(text->y() + text->baselineOffset());
            }
        }
        // Of projects and of tasks.
        QCOMPARE(lines, (QSet<int>{24, 26}));
    }

    void theNamesOfARowOfCardsShareALine() {
        ShellFixture f(
            {{.id = "a", .cwd = "/src/atlas"},
             {.id = "b", .age = 1, .cwd = "/src/数据看板"},
             {.id = "c", .age = 2, .cwd = "/src/" + QString("汉").repeated(40).toStdString()},
             {.id = "d", .age = 3, .cwd = "/src/" + std::string(90, 'x')}},
            {{"dashboardMode", "focus"}});
        QList<qreal> lines;
        for (const QQuickItem *card : f.items("FocusProjectCard")) {
            for (const QQuickItem *text : card->childItems()) {
                if (f.typeOf(text) == "SoftText") {
                    lines.append(text->y() + text->baselineOffset());
                }
            }
        }
        // Name and age, below those of the first card.
        QString lower;
        for (qsizetype i = 0; i < lines.size(); ++i) {
            lower += QStringLiteral("%1 ").arg(qRound(lines[i] - lines[i % 2]));
        }
        QCOMPARE(lower, "0 0 0 0 0 22 0 22 ");
    }

    void cardsExistNearTheViewOnly() {
        ShellFixture f(projects(400), {{"dashboardMode", "focus"}});
        const auto nameOf = [&f](const QQuickItem *card) {
            return f.texts(card).section('|', 1, 1);
        };
        const auto shownCards = [&] {
            const auto cards = f.items("FocusProjectCard");
            return nameOf(cards.first()) + " to " + nameOf(cards.last());
        };
        QCOMPARE(shownCards(), "project0 to project23");
        // Above the room for the rims of the first row.
        const QRect area = f.rect(f.item("FocusGridHeader")).toRect().adjusted(0, 0, 0, -14);
        const QImage header = f.window->grabWindow().copy(area);
        // The keyboard finds the next row below the view.
        tabToCard(f);
        for (int card = 0; card < 40; ++card) {
            f.press(Qt::Key_Tab);
        }
        const QQuickItem *focused = f.window->activeFocusItem();
        QCOMPARE(nameOf(focused), "project40");
        QVERIFY(f.rect(f.item("FocusProjectGrid")).contains(f.rect(focused)));
        f.press(Qt::Key_End);
        QCOMPARE(shownCards(), "project40 to project399");
        QCOMPARE(f.items("FocusProjectCard").size(), 21);
        QVERIFY2(f.window->grabWindow().copy(area) == header, "no card covers the header");
        f.press(Qt::Key_Home);
        QCOMPARE(f.window->activeFocusItem(), focused);
    }
};

QTEST_MAIN(ContentViewTest)
#include "ContentViewTest.moc"
