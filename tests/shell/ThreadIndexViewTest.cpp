#include "tests/shell/ShellFixture.h"

#include <QElapsedTimer>

#include <cmath>

using namespace tallyview;
using namespace tallyview::test;

namespace {

std::vector<Sample> some() {
    return {{.id = "a", .age = 10, .title = "First"},
            {.id = "b", .age = 7200, .title = "<b>Second</b>"},
            {.id = "c", .age = 7300, .running = false, .title = "Third"}};
}

QString titles(const ShellFixture &f) {
    QString result;
    for (const QQuickItem *row : f.items("TaskRowView")) {
        result += f.texts(row).section(u'|', 0, 0) + u' ';
    }
    return result.trimmed();
}

} // namespace

class ThreadIndexViewTest : public QObject {
    Q_OBJECT

private slots:
    void aClickSelectsAndTheChevronOpens() {
        ShellFixture f(some());
        f.click(f.items("TaskRowView")[1]);
        QCOMPARE(f.selected(), "b");
        QVERIFY(f.opener.opened.isEmpty());
        const QRectF row = f.rect(f.item("TaskRowView"));
        QTest::mouseClick(f.window, Qt::LeftButton, {},
                          QPointF(row.right() - 21, row.center().y()).toPoint());
        QCOMPARE(f.selected(), "a");
        QCOMPARE(f.opener.opened, QList<QByteArray>{"orvik://threads/a"});
    }

    void filtersAreSetAndReset() {
        ShellFixture f(some());
        QVERIFY(!f.text("重置筛选"));
        f.click(f.text("全部"));
        QCOMPARE(titles(f), "First <b>Second</b> Third");
        f.click(f.text("更早"));
        QVERIFY(f.text("没有匹配的任务") && f.text("0 条"));
        f.click(f.item("ProjectRow"));
        f.click(f.text("重置筛选"));
        QCOMPARE(titles(f), "First <b>Second</b>");
        QVERIFY(!f.model.selectedProject() && !f.text("重置筛选"));
    }

    void theSearchFieldHasAMenu() {
        ShellFixture f(some());
        f.press(Qt::Key_K, Qt::ControlModifier);
        QTest::keyClick(f.window, 's');
        f.press(Qt::Key_A, Qt::ControlModifier);
        const std::pair<const char *, const char *> commands[] = {
            {"剪切", ""},   {"粘贴", "s"},  {"粘贴", "ss"},  {"全选", "ss"},
            {"复制", "ss"}, {"粘贴", "ss"}, {"粘贴", "ssss"}};
        for (const auto &[command, query] : commands) {
            QTest::mouseClick(f.window, Qt::RightButton, {},
                              f.rect(f.item("SearchField")).center().toPoint());
            f.settle();
            f.click(f.text(command));
            QCOMPARE(f.model.query(), query);
        }
        for (const auto &[key, modifier] :
             {std::pair(Qt::Key_Menu, Qt::NoModifier), std::pair(Qt::Key_F10, Qt::ShiftModifier)}) {
            f.press(key, modifier);
            QVERIFY(f.text("全选"));
            f.press(Qt::Key_Escape);
        }
    }

    void replacedContentFadesAsItWas() {
        ShellFixture f(some(), {}, true);
        QTRY_COMPARE(f.items("ThreadList").size(), 1);
        f.model.setStatusFilter(TaskStatusFilter::completed);
        QCoreApplication::processEvents(); // a picture of the window would take its time
        QCOMPARE(f.items("ThreadList").size(), 2);
        QCOMPARE(titles(f), "First <b>Second</b> Third");
        QTRY_COMPARE(f.items("ThreadList").size(), 1);
        QCOMPARE(titles(f), "Third");
        // Reduced motion drops a transition that is on its way.
        f.model.setStatusFilter(TaskStatusFilter::all);
        QCoreApplication::processEvents();
        QCOMPARE(f.items("ThreadList").size(), 2);
        f.system.setReducedMotion(true);
        f.settle();
        QCOMPARE(f.items("ThreadList").size(), 1);
        for (const QQuickItem *item = f.item("ThreadList"); item; item = item->parentItem()) {
            QCOMPARE(item->opacity() * item->scale(), 1.0);
        }
        // Typing changes the list in place.
        f.system.setReducedMotion(false);
        const auto list = f.items("ThreadList");
        f.model.setQuery("first");
        f.settle();
        QCOMPARE(f.items("ThreadList"), list);
    }

    void onlyRowsThatRunWhenTheyAppearPulse() {
        ShellFixture f({{.id = "a"}, {.id = "b", .running = false}}, {}, true);
        f.model.setStatusFilter(TaskStatusFilter::all);
        f.settle();
        QTRY_COMPARE(f.pulses(), "10");
        f.show({{.id = "a", .running = false}, {.id = "b"}});
        QTest::qWait(60);
        QVERIFY2(f.pulses() == "00", "what finishes stops at once, what starts does not begin");
        f.system.setReducedMotion(true);
        f.show({{.id = "c"}});
        QTest::qWait(60);
        QVERIFY2(f.pulses() == "0", "nothing moves where motion is reduced");
    }

    void theScrollerTellsAndMoves() {
        ShellFixture f(lately(53));
        QQuickItem *list = f.item("ThreadList");
        const auto *knob = list->findChild<QQuickItem *>("knob");
        const QRectF area = f.rect(list);
        const double content = list->property("contentHeight").toDouble();
        const double hidden = content - area.height();
        const double length = area.height() * area.height() / content;
        const auto top = [list] { return list->property("contentY").toDouble(); };
        for (const double share : {0.5, 1.0, 0.0}) {
            list->setProperty("contentY", share * hidden);
            QCOMPARE(f.rect(knob).translated(-area.topLeft()),
                     QRectF(area.width() - 2.65, share * (area.height() - length) + 1.5, 2.3,
                            length - 3));
        }
        QCOMPARE(knob->parentItem()->opacity(), 1.0);
        QTRY_COMPARE(knob->parentItem()->opacity(), 0.0);
        const auto timeToShow = [&f](int threads) {
            QElapsedTimer time;
            time.start();
            f.show(lately(threads));
            return time.elapsed();
        };
        const qint64 few = timeToShow(10'000);
        QVERIFY2(timeToShow(100'000) < 30 * few, "ten times the threads take ten times as long");
        f.press(Qt::Key_End); // whatever has the focus
        QCOMPARE(top(), list->property("contentHeight").toDouble() - area.height());
        QCOMPARE(f.rect(knob).bottom(), area.bottom() - 1.5);
        QCOMPARE(knob->height(), 25.0);
        QVERIFY2(f.items("TaskRowView").size() < 30, "only rows near the view exist");
        f.show(lately(3));
        QVERIFY(top() == 0 && !knob->isVisible());
    }

    void whatIsReadDecidesWhatShows() {
        const QString missing = "找不到 Orvik 状态数据库：";
        const std::array<QString, 5> cases[] = {
            {"standard", "LoadingIndexView", "ThreadList", "无法读取任务|",
             "没有匹配的任务|换一个时间范围或状态，也可以重置全部筛选。"},
            {"focus", "ProgressIndicator", "FocusProjectCard", "还没有可展示的项目|",
             "还没有可展示的项目|Orvik 产生任务后，项目会自动出现在这里。"}};
        for (const auto &[mode, loading, list, failed, empty] : cases) {
            ShellFixture f({}, {{"dashboardMode", mode}});
            QCOMPARE(f.texts(f.item("EmptyIndexView")), empty);
            // A refresh is over before anybody looks: what shows when its end changes the model?
            bool wasLoading = false;
            connect(&f.model, &DashboardModel::aboutToChange, this,
                    [&f, &wasLoading, type = loading] { wasLoading |= f.item(type) != nullptr; });
            const auto fail = [&f] {
                std::filesystem::remove(f.databasePath());
                f.refresh();
                f.settle();
                return f.text("读取失败") != nullptr;
            };
            QVERIFY(fail() && std::exchange(wasLoading, false));
            QCOMPARE(f.texts(f.item("EmptyIndexView")),
                     failed + missing + f.databasePath().c_str());
            QVERIFY(f.looks(f.item("StatusFooter"))[1].contains("warning"));
            f.show(some());
            QVERIFY(std::exchange(wasLoading, false));
            QVERIFY(f.item(list) && f.text("SQLite · 本机只读"));
            // What has once been read stays.
            QVERIFY(fail() && !wasLoading && f.item(list));
        }
    }
};

QTEST_MAIN(ThreadIndexViewTest)
#include "ThreadIndexViewTest.moc"
