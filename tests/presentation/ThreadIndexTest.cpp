#include "app/presentation/ThreadIndexContent.h"
#include "tests/support/ModelFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

/// A thread index whose list shows 680 points: ten rows.
struct IndexFixture : ModelFixture {
    IndexFixture() {
        index.setModel(&model);
        content.setIndex(&index);
        content.setViewHeight(680);
        QObject::connect(&content, &ThreadIndexContent::scrollRequested, &content,
                         [this](double top, bool animated) {
                             scrolls.append(QString::number(top) + (animated ? "~" : ""));
                             content.setViewTop(top);
                         });
    }

    const TaskRowList &rows() { return static_cast<const TaskRowList &>(*content.rows()); }
    /// The ids of the rows that exist with their tops from that of the view on.
    QString rowsBelow(double top) {
        QStringList result;
        for (const TaskRow &row : rows().rows()) {
            if (row.top >= top) {
                result.append(row.key.section(u'/', 1) + "@" + QString::number(row.top - top));
            }
        }
        return result.join(u' ');
    }
    QString firstShown() { return rowsBelow(content.viewTop()).section(u' ', 0, 0); }
    void settle() { QCoreApplication::processEvents(); }

    ThreadIndexState index;
    ThreadIndexContent content;
    QStringList scrolls;
};

} // namespace

class ThreadIndexTest : public QObject {
    Q_OBJECT

private slots:
    void theHeaderNamesTheFilters() {
        IndexFixture f;
        f.show({{.id = "a"}, {.id = "b", .running = false}, {.id = "c", .cwd = "/src/beta"}});
        f.index.chooseStatus(2);
        f.index.chooseRecency(3);
        f.model.setSelectedProject("beta");
        f.model.setPinnedOnly(true);
        f.model.setIncludeSubagents(true);
        f.settle();
        QCOMPARE(f.index.statusLabels().join(u' '),
                 "进行中，1 个任务 已完成，0 个任务 全部，1 个任务");
        QCOMPARE(f.index.contentIdentity(), "all-older-beta-pinned-with-subagents");
    }

    void positionsAreExactAndOnlyNearRowsExist() {
        IndexFixture f;
        f.show({{.id = "a", .age = 1}, {.id = "b", .age = 2}, {.id = "c", .age = 7200}});
        QCOMPARE(f.rowsBelow(0), "a@38 b@106 c@216");
        QCOMPARE(f.content.contentHeight(), 38 + 2 * 58 + 10 + 14 + 38 + 58 + 14 + 20.0);

        f.show(lately(3000));
        QCOMPARE(f.content.contentHeight(), 38 + 3000 * 68 - 10 + 14 + 20.0);
        f.content.setViewTop(38 + 1500 * 68);
        QCOMPARE(f.firstShown(), "1500@0");
        QVERIFY(f.rows().rowCount() < 20);
        f.content.setViewTop(f.content.contentHeight() - 680);
        QCOMPARE(f.rows().rows().back().key, "recent/2999");
    }

    void aRefreshTouchesOnlyWhatChanged() {
        IndexFixture f;
        auto samples = lately(2000);
        f.show(samples);
        QSignalSpy changes(f.content.rows(), &QAbstractItemModel::dataChanged);
        samples[3].title = "Another title";
        samples[1000].title = "Far away";
        f.show(samples);
        QCOMPARE(changes.count(), 1);
        const QModelIndex third = f.content.rows()->index(3, 0);
        QCOMPARE(changes.first().first(2), QVariantList({third, third}));
    }

    void theFirstVisibleRowStaysInPlace() {
        IndexFixture f;
        std::vector<Sample> samples = lately(500);
        f.show(samples);
        f.content.setViewTop(38 + 100 * 68 - 20);
        QCOMPARE(f.firstShown(), "100@20");
        samples.insert(samples.begin(), {{.id = "x", .age = -1}, {.id = "y", .age = -1}});
        samples.erase(samples.begin() + 50);
        f.show(samples);
        QCOMPARE(f.firstShown(), "100@20");
        samples.erase(samples.begin() + 101); // "100" itself
        f.show(samples);
        QCOMPARE(f.firstShown(), "101@20"); // "99", half visible, stays where it was
        f.model.setQuery("task");
        f.settle();
        QCOMPARE(f.scrolls.last(), "0");
    }

    void aRowOfTwoGroupsStaysInItsOwn() {
        IndexFixture f;
        f.show(lately(40));
        f.utcOffset = [](qint64) { return 12 * 3600 - 60; }; // seconds before midnight
        f.now += std::chrono::minutes(30);
        f.model.setRecencyFilter(TaskRecencyFilter::week);
        f.settle();
        QCOMPARE(f.rows().rows().front().key, "recent/0");
        f.content.setViewTop(38 + 40 * 68 + 4 + 38); // the first row of the second group
        QCOMPARE(f.firstShown(), "0@0");
        f.refresh();
        QCOMPARE(f.scrolls.join(u' '), "");
    }

    void aNewSelectionIsCentred() {
        IndexFixture f;
        f.show(lately(100));
        QVERIFY2(f.scrolls.isEmpty(), "the first selection does not scroll");
        for (const char *id : {"50", "1", "99"}) {
            f.model.setSelectedThreadID(id);
            f.settle();
        }
        const double end = f.content.contentHeight() - 680;
        QCOMPARE(f.scrolls.join(u' '),
                 QStringLiteral("%1~ 0~ %2~").arg(38 + 50 * 68 + 29 - 340).arg(end));
        QVERIFY(f.rows().rows().back().selected);
        f.model.setSelectedThreadID("not there");
        f.settle();
        QCOMPARE(f.scrolls.size(), 3);
        // What replaces the list begins at its top.
        f.model.setSelectedThreadID("50");
        ThreadIndexContent fresh;
        const QSignalSpy scrolls(&fresh, &ThreadIndexContent::scrollRequested);
        fresh.setViewHeight(680);
        fresh.setIndex(&f.index);
        QCOMPARE(scrolls.count(), 0);
    }

    void rowsAreReadyToBeDrawn() {
        IndexFixture f;
        const std::string endless(5'000'000, 'x');
        f.show({{.id = "a", .age = 300, .cwd = "/src/data-pipe", .title = "One\nline"},
                {.id = "b", .age = 400, .title = endless}});
        const TaskRow &row = f.rows().row(0);
        QCOMPARE(QStringList({row.title, row.description(), row.openLabel}).join(u'|'),
                 "One line|进行中，5 分钟前，DP / DATA-PIPE / CLI|在 Orvik 中打开 One line");
        QVERIFY(row.active && row.selected && f.rows().row(1).title.size() < 5000);
    }
};

QTEST_GUILESS_MAIN(ThreadIndexTest)
#include "ThreadIndexTest.moc"
