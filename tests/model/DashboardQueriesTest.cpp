#include "tests/support/ModelFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

using Change = std::function<void(DashboardModel &)>;

constexpr std::int64_t minute = 60;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

/// One thread in each time bucket, and what else the filters tell apart.
std::vector<Sample> mixed() {
    return {
        {.id = "fresh", .age = 10 * minute, .title = "Größe ändern", .branch = "feature/Foo"},
        {.id = "future", .age = -day, .cwd = "/src/beta"},
        {.id = "morning", .age = 5 * hour, .cwd = "/src/beta", .source = "vscode"},
        {.id = "done", .age = 2 * hour, .running = false},
        {.id = "filed", .age = 3 * hour, .archived = true},
        {.id = "helper", .age = 4 * hour, .subagent = true},
        {.id = "sunday", .age = 4 * day},
        {.id = "friday", .age = 6 * day + 12 * hour},
        {.id = "thursday", .age = 6 * day + 12 * hour + 1},
        {.id = "timeless", .age = std::nullopt, .cwd = "/src/gamma"},
    };
}

QString groups(const DashboardModel &model) {
    QStringList result;
    for (const ThreadTimeGroup &group : model.timeGroups()) {
        result.append(QString::fromStdString(group.title) + ": " +
                      ModelFixture::ids(group.threads));
    }
    return result.join(" | ");
}

QString projects(const DashboardModel &model) {
    QStringList result;
    for (const ProjectCount &project : model.projects()) {
        result.append(QString::fromStdString(project.name) + QString::number(project.count));
    }
    return result.join(u' ');
}

} // namespace

class DashboardQueriesTest : public QObject {
    Q_OBJECT

private slots:
    void filtersDecideWhatIsVisible() {
        using enum TaskRecencyFilter;
        const auto all = [](
                             TaskRecencyFilter recency, const Change &more = [](auto &) {}) {
            return [=](DashboardModel &model) {
                model.setStatusFilter(TaskStatusFilter::all);
                model.setRecencyFilter(recency);
                more(model);
            };
        };
        const std::pair<Change, const char *> cases[] = {
            {[](auto &) {}, "fresh morning"},
            {[](auto &m) { m.setStatusFilter(TaskStatusFilter::completed); }, "done filed"},
            {[](auto &m) { m.setRecencyFilter(older); }, "thursday"},
            {all(today), "fresh done filed morning"},
            {all(recent), "future fresh"},
            {all(older), "thursday timeless"},
            {all(today, [](auto &m) { m.setIncludeSubagents(true); }),
             "fresh done filed helper morning"},
            {all(week, [](auto &m) { m.setSelectedProject("beta"); }), "future morning"},
            {all(week, [](auto &m) { m.setSource("vscode"); }), "morning"},
            {all(week, [](auto &m) { m.setPinnedOnly(true); }), "done"},
            // Nothing but status and subagents applies to a thread without a time.
            {all(older,
                 [](auto &m) {
                     m.setPinnedOnly(true);
                     m.setSelectedProject("atlas");
                     m.setQuery("unlike");
                     m.setSource("none");
                 }),
             "timeless"},
            {all(week, [](auto &m) { m.setNewestFirst(false); }),
             "friday sunday morning filed done fresh future"},
        };
        ModelFixture f;
        std::vector<Sample> samples = mixed();
        samples.back().running = false;
        f.show(samples);
        f.model.togglePin(f.thread("done"));
        for (const auto &[setUp, visible] : cases) {
            f.model.clearFilters();
            setUp(f.model);
            QCOMPARE(f.visible(), visible);
        }
    }

    void searchIsTrimmedAndBlindToCaseAndSpelling() {
        ModelFixture f;
        f.show({mixed().front()});
        // ß has no other lower case, there are no wildcards, ids are not searched, blanks count.
        for (const auto &[query, isFound] : {std::pair("   ", true),
                                             {"  fOO\u3000", true},
                                             {"gro\u0308ße", true},
                                             {"/SRC/atl", true},
                                             {"feature/foo cli", true},
                                             {"GRÖSSE", false},
                                             {"f*o", false},
                                             {"fresh", false},
                                             {"feature/foo  cli", false}}) {
            f.model.setQuery(query);
            QVERIFY2((f.visible() == "fresh") == isFound, query);
        }
    }

    void equalTimesKeepTheStoresOrder() {
        ModelFixture f;
        f.show({{.id = "b", .age = 5}, {.id = "a", .age = 5}, {.id = "c", .age = 1}});
        QCOMPARE(f.visible(), "c b a");
        f.model.setNewestFirst(false);
        QCOMPARE(f.visible(), "b a c");
    }

    void groupsFollowTheClock() {
        ModelFixture f;
        f.show(mixed());
        f.model.setStatusFilter(TaskStatusFilter::all);
        f.model.setRecencyFilter(TaskRecencyFilter::week);
        QCOMPARE(groups(f.model),
                 "刚刚: future fresh | 今天: done filed morning | 本周: sunday friday");
        f.model.setRecencyFilter(TaskRecencyFilter::older);
        QCOMPARE(groups(f.model), "更早: thursday timeless");
        // Shortly after midnight a thread is in two groups.
        f.show({{.id = "late", .age = 12 * hour + 10 * minute}});
        f.model.setRecencyFilter(TaskRecencyFilter::week);
        f.now -= std::chrono::hours(12) - std::chrono::minutes(30);
        QCOMPARE(groups(f.model), "刚刚: late | 本周: late");
        f.now += std::chrono::minutes(90);
        QCOMPARE(groups(f.model), "本周: late");
    }

    void daysAreThoseOfTheUsersCalendar() {
        ModelFixture f;
        // Clocks went forward on 2024-03-10 in New York: the days of that week have 167 hours.
        f.utcOffset = [](qint64 time) { return time < 1'710'054'000 ? -18000 : -14400; };
        f.now = Instant(std::chrono::seconds(1'710'388'800)); // 2024-03-14 00:00 there
        const std::int64_t weekStart = 1'709'874'000;         // 2024-03-08 00:00 there
        f.show({{.id = "in", .age = noon - weekStart}, {.id = "out", .age = noon - weekStart + 1}});
        f.model.setRecencyFilter(TaskRecencyFilter::week);
        QCOMPARE(f.visible(), "in");
        f.model.setRecencyFilter(TaskRecencyFilter::older);
        QCOMPARE(f.visible(), "out");
    }

    void countersIgnoreTheFilters() {
        ModelFixture f;
        f.show(mixed());
        f.model.setQuery("unlike");
        f.model.setPinnedOnly(true);
        f.model.setIncludeSubagents(true);
        const auto counters = [&] {
            return QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
                .arg(f.model.rootThreads().size())
                .arg(f.model.runningCount())
                .arg(f.model.archivedCount())
                .arg(f.model.todayCount())
                .arg(f.model.projectCount())
                .arg(f.model.count(TaskStatusFilter::completed))
                .arg(f.model.count(TaskStatusFilter::all));
        };
        QCOMPARE(counters(), "9 7 1 4 3 2 9");
        f.model.setSelectedProject("beta");
        QCOMPARE(counters(), "9 7 1 4 3 0 2");
    }

    void projectsAreOrderedByWeightAndName() {
        ModelFixture f;
        f.show({{.id = "1", .age = std::nullopt, .cwd = "/a/zeta"},
                {.id = "2", .age = 10, .cwd = "/a/alpha"},
                {.id = "3", .age = 5, .cwd = "/a/Beta"},
                {.id = "4", .age = 5, .running = false, .cwd = "/a/\u00e9clair"},
                {.id = "5", .age = 9, .cwd = "/b/e\u0301clair"},
                {.id = "6", .age = 1, .cwd = "/a/zeta", .archived = true, .subagent = true},
                {.id = "7", .age = std::nullopt, .cwd = "/a/omega"}});
        QCOMPARE(projects(f.model), "éclair2 alpha1 Beta1 omega1 zeta1");
        const auto list = [&] {
            QStringList summaries;
            for (const ProjectSummary &summary : f.model.projectSummaries()) {
                summaries.append(QStringLiteral("%1 %2/%3/%4")
                                     .arg(QString::fromStdString(summary.name))
                                     .arg(summary.count)
                                     .arg(summary.runningCount)
                                     .arg(summary.completedCount));
            }
            return summaries.join(", ");
        };
        QCOMPARE(list(), "Beta 1/1/0, éclair 2/1/1, alpha 1/1/0, omega 1/1/0, zeta 1/1/0");
        f.model.setIncludeSubagents(true);
        QCOMPARE(list(), "zeta 2/1/1, Beta 1/1/0, éclair 2/1/1, alpha 1/1/0, omega 1/1/0");
        f.model.setSelectedProject("e\u0301clair");
        QCOMPARE(f.model.count(TaskStatusFilter::all), 2U);
    }

    void extraFiltersAreWhatResetTakesBack() {
        const Change changes[] = {
            [](auto &m) { m.setQuery(" "); },
            [](auto &m) { m.setSource("cli"); },
            [](auto &m) { m.setIncludeSubagents(true); },
            [](auto &m) { m.setPinnedOnly(true); },
            [](auto &m) { m.setStatusFilter(TaskStatusFilter::all); },
            [](auto &m) { m.setRecencyFilter(TaskRecencyFilter::week); },
        };
        ModelFixture f;
        f.model.setNewestFirst(false);
        QVERIFY(!f.model.hasExtraFilters());
        for (const Change &change : changes) {
            change(f.model);
            QVERIFY(f.model.hasExtraFilters() && f.model.hasExtraFiltersIgnoringProject());
            f.model.clearFilters();
            QVERIFY(!f.model.hasExtraFilters());
        }
        f.model.setSelectedProject("atlas");
        QVERIFY(f.model.hasExtraFilters() && !f.model.hasExtraFiltersIgnoringProject());
        QVERIFY(!f.model.newestFirst());
    }
};

QTEST_GUILESS_MAIN(DashboardQueriesTest)
#include "DashboardQueriesTest.moc"
