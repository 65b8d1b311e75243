#include "tests/views/ViewFixture.h"

#include <QAccessible>
#include <QInputMethodEvent>

using namespace tallyview;
using namespace tallyview::test;

namespace {

struct IndexView : ViewFixture {
    explicit IndexView(const QByteArray &more = {})
        : ViewFixture("ThreadIndexView { objectName: 'index'; anchors.fill: parent; focus: true\n"
                      "  model: window.dashboard; title: '任务动态'; " +
                      more + " }") {}

    QQuickItem *view() const { return window->findChild<QQuickItem *>("index"); }
    QQuickItem *list() const { return item("ThreadList"); }
    QStringList titles() const {
        QStringList result;
        for (const QQuickItem *row : items("TaskRowView")) {
            for (const QQuickItem *child : row->findChildren<QQuickItem *>()) {
                if (QString::fromLatin1(child->metaObject()->className()).startsWith("SoftText")) {
                    result.append(child->property("text").toString());
                    break;
                }
            }
        }
        return result;
    }
};

std::vector<Sample> some() {
    return {{.id = "a", .age = 10, .title = "First"},
            {.id = "b", .age = 7200, .title = "<b>Second</b>"},
            {.id = "c", .age = 7300, .running = false, .title = "Third"}};
}

} // namespace

class ThreadIndexViewTest : public QObject {
    Q_OBJECT

private slots:
    void everythingStandsWhereItBelongs() {
        IndexView f;
        f.show(some());
        f.settle();
        QCOMPARE(f.place(f.item("ThreadIndexHeader")), "0 0 900 164");
        QCOMPARE(f.place(f.item("StatusControl")), "24 62 310 44");
        QCOMPARE(f.place(f.item("SearchField")), "348 63 528 42");
        QCOMPARE(f.place(f.item("SoftIconButton")), "846 20 30 30");
        QCOMPARE(f.item("RecencyCapsule")->y() + f.item("RecencyCapsule")->height(), 30.0);
        QCOMPARE(f.place(f.items("TimeGroupHeader")[0]), "24 164 852 38");
        QCOMPARE(f.place(f.items("TaskRowView")[0]), "55 202 821 58");
        QCOMPARE(f.place(f.items("TimeGroupHeader")[1]), "24 274 852 38");
        QCOMPARE(f.place(f.items("TaskRowView")[1]), "55 312 821 58");
        QCOMPARE(f.place(f.item("TaskStatusMark")), "66 214 34 34");
        const QQuickItem *age = f.text("刚刚");
        QVERIFY(age);
        QVERIFY(f.text("任务动态") && f.text("2 条") && f.text("⌘ K"));
        QVERIFY2(f.text("<b>Second</b>"), "markup is shown as it is");
    }

    void aClickSelectsAndTheChevronOpens() {
        IndexView f;
        f.show(some());
        f.settle();
        QTest::mouseClick(f.window, Qt::LeftButton, {}, {500, 341});
        f.settle();
        QCOMPARE(f.selected(), "b");
        QVERIFY(f.opener.opened.isEmpty());
        QTest::mouseClick(f.window, Qt::LeftButton, {}, {855, 231});
        QCOMPARE(f.selected(), "a");
        QCOMPARE(f.opener.opened, QList<QByteArray>{"orvik://threads/a"});
    }

    void filtersAreSetAndReset() {
        IndexView f;
        f.show(some());
        f.settle();
        QVERIFY(!f.text("重置筛选"));
        f.click(f.text("全部"));
        QCOMPARE(f.titles().join(u' '), "First <b>Second</b> Third");
        f.click(f.text("更早"));
        QVERIFY(f.text("没有匹配的任务") && f.text("0 条"));
        f.click(f.text("重置筛选"));
        QCOMPARE(f.titles().join(u' '), "First <b>Second</b>");
        QVERIFY(!f.text("重置筛选"));
    }

    void goingBackKeepsTheProjectOnReset() {
        IndexView f("canGoBack: true");
        QSignalSpy back(f.view(), SIGNAL(backRequested()));
        f.show(some());
        f.model.setSelectedProject("atlas");
        f.settle();
        QVERIFY(!f.text("重置筛选"));
        f.model.setStatusFilter(TaskStatusFilter::all);
        f.settle();
        f.click(f.text("重置筛选"));
        QCOMPARE(f.model.statusFilter(), TaskStatusFilter::running);
        QCOMPARE(f.model.selectedProject().value_or(""), "atlas");
        f.click(f.items("SoftIconButton")[0]);
        QCOMPARE(back.count(), 1);
    }

    void theSearchFieldTakesKeysAndCompositions() {
        IndexView f;
        f.show(some());
        f.settle();
        QMetaObject::invokeMethod(f.view(), "focusSearch");
        QVERIFY(f.view()->property("searchFocused").toBool());
        for (const char key : {'s', 'e', 'c'}) {
            QTest::keyClick(f.window, key);
        }
        f.settle();
        QCOMPARE(f.titles().join(u' '), "<b>Second</b>");
        // What is still being composed filters nothing; what is committed does.
        QQuickItem *field = f.window->activeFocusItem();
        QInputMethodEvent composing("zhi", {});
        QCoreApplication::sendEvent(field, &composing);
        f.settle();
        QCOMPARE(f.model.query(), "sec");
        QInputMethodEvent committing;
        committing.setCommitString("直");
        QCoreApplication::sendEvent(field, &committing);
        f.settle();
        QCOMPARE(f.model.query(), "sec直");
        f.model.clearFilters();
        f.settle();
        QCOMPARE(field->property("text"), "");
        QTest::keyClick(f.window, Qt::Key_Escape);
        QVERIFY(!f.view()->property("searchFocused").toBool());
    }

    void thePageKeysScroll() {
        IndexView f;
        std::vector<Sample> samples;
        for (int i = 0; i < 20'000; ++i) {
            samples.push_back({.id = std::to_string(i), .age = i / 8});
        }
        f.show(samples);
        f.settle();
        QVERIFY2(f.items("TaskRowView").size() < 30, "only rows near the view exist");
        QCOMPARE(f.list()->property("contentHeight").toDouble(), 38 + 20'000 * 68 - 10 + 14 + 20.0);
        QTest::keyClick(f.window, Qt::Key_PageDown);
        QVERIFY(f.list()->property("contentY").toDouble() > 300);
        QTest::keyClick(f.window, Qt::Key_End);
        f.settle();
        QCOMPARE(f.list()->property("contentY").toDouble(),
                 f.list()->property("contentHeight").toDouble() - f.list()->height());
        QVERIFY(f.items("TaskRowView").size() < 30);
        f.model.setSelectedThreadID("1");
        f.settle();
        QCOMPARE(f.list()->property("contentY").toDouble(), 0.0);
    }

    void replacedContentFadesAsItWas() {
        IndexView f;
        f.window->setProperty("reducedMotion", false);
        f.show(some());
        f.settle();
        f.model.setStatusFilter(TaskStatusFilter::completed);
        f.settle();
        QCOMPARE(f.items("ThreadList").size(), 2);
        QCOMPARE(f.titles().join(u' '), "First <b>Second</b> Third");
        QTRY_COMPARE(f.items("ThreadList").size(), 1);
        QCOMPARE(f.titles().join(u' '), "Third");
        // Reduced motion drops a transition that is on its way.
        f.model.setStatusFilter(TaskStatusFilter::all);
        f.settle();
        QCOMPARE(f.items("ThreadList").size(), 2);
        f.window->setProperty("reducedMotion", true);
        f.settle();
        QCOMPARE(f.items("ThreadList").size(), 1);
        for (const QQuickItem *item = f.list(); item; item = item->parentItem()) {
            QCOMPARE(item->opacity() * item->scale(), 1.0);
        }
        // Typing changes the list in place.
        f.window->setProperty("reducedMotion", false);
        const QQuickItem *list = f.list();
        f.model.setQuery("first");
        f.settle();
        QCOMPARE(f.items("ThreadList"), QList{const_cast<QQuickItem *>(list)});
    }

    void onlyRowsThatRunWhenTheyAppearPulse() {
        IndexView f;
        f.window->setProperty("reducedMotion", false);
        f.show({{.id = "a"}, {.id = "b", .running = false}});
        f.model.setStatusFilter(TaskStatusFilter::all);
        f.settle();
        QTRY_COMPARE(f.items("TaskStatusMark").size(), 2);
        const auto pulsing = [&f](int row) {
            const QQuickItem *mark = f.items("TaskStatusMark")[row];
            return mark->childItems().last()->opacity() < 1;
        };
        QTRY_VERIFY(pulsing(0));
        QVERIFY(!pulsing(1));
        f.show({{.id = "a", .running = false}, {.id = "b"}});
        f.settle();
        QTest::qWait(60);
        QVERIFY2(!pulsing(0), "a task that finishes stops at once");
        QVERIFY2(!pulsing(1), "a task that starts on screen does not begin");
    }

    void failuresAreToldInTheStoresWords() {
        IndexView f;
        f.refresh();
        f.settle();
        QVERIFY(f.text("无法读取任务"));
        QVERIFY(f.text("找不到 Orvik 状态数据库：" +
                       QString::fromStdString(f.databasePath().string())));
        f.show(some());
        f.settle();
        QVERIFY(!f.text("无法读取任务") && f.text("First"));
        std::filesystem::remove(f.databasePath());
        f.refresh();
        f.settle();
        QVERIFY(!f.text("无法读取任务") && f.text("First"));
    }
};

QTEST_MAIN(ThreadIndexViewTest)
#include "ThreadIndexViewTest.moc"
