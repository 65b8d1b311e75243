#include "tests/model/ModelFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

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
    void filtersDecideWhatIsVisible_data() {
        using Setup = std::function<void(DashboardModel &)>;
        QTest::addColumn<Setup>("setup");
        QTest::addColumn<QString>("visible");
        const auto row = [](const char *name, const char *visible, const Setup &setup) {
            QTest::newRow(name) << setup << visible;
        };
        const auto all = [row](const char *name, TaskRecencyFilter recency, const char *visible,
                               const Setup &more) {
            row(name, visible, [=](DashboardModel &model) {
                model.setStatusFilter(TaskStatusFilter::all);
                model.setRecencyFilter(recency);
                more(model);
            });
        };
        using enum TaskRecencyFilter;
        row("defaults", "fresh morning", [](auto &) {});
        row("completed", "done filed",
            [](auto &m) { m.setStatusFilter(TaskStatusFilter::completed); });
        row("older, running", "thursday", [](auto &m) { m.setRecencyFilter(older); });
        all("today", today, "fresh done filed morning", [](auto &) {});
        all("recent", recent, "future fresh", [](auto &) {});
        all("older", older, "thursday timeless", [](auto &) {});
        all("oldest first", week, "friday sunday morning filed done fresh future",
            [](auto &m) { m.setNewestFirst(false); });
        all("subagents", today, "fresh done filed helper morning",
            [](auto &m) { m.setIncludeSubagents(true); });
        all("project", week, "future morning", [](auto &m) { m.setSelectedProject("beta"); });
        all("source", week, "morning", [](auto &m) { m.setSource("vscode"); });
        all("pinned", week, "done", [](auto &m) { m.setPinnedOnly(true); });
        // Nothing but status and subagents applies to a thread without a time.
        all("older, pinned, elsewhere, unlike", older, "timeless", [](auto &m) {
            m.setPinnedOnly(true);
            m.setSelectedProject("atlas");
            m.setQuery("unlike");
            m.setSource("none");
        });
    }
    void filtersDecideWhatIsVisible() {
        QFETCH(std::function<void(DashboardModel &)>, setup);
        ModelFixture f;
        std::vector<Sample> samples = mixed();
        samples.back().running = false;
        f.show(samples);
        f.model.togglePin(f.thread("done"));
        setup(f.model);
        QTEST(f.visible(), "visible");
    }

    void searchIsTrimmedAndBlindToCaseAndSpelling() {
        ModelFixture f;
        f.show({mixed().front()});
        const auto found = [&f](const char *query) {
            f.model.setQuery(query);
            return f.visible() == "fresh";
        };
        for (const char *query :
             {"   ", "  fOO\u3000", "gro\u0308ße", "/SRC/atl", "feature/foo cli"}) {
            QVERIFY2(found(query), query);
            QVERIFY(f.model.hasExtraFilters());
        }
        // ß has no other lower case, there are no wildcards, ids are not searched, blanks count.
        for (const char *query : {"GRÖSSE", "f*o", "fresh", "feature/foo  cli"}) {
            QVERIFY2(!found(query), query);
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
    }

    void shortlyAfterMidnightAThreadIsInTwoGroups() {
        ModelFixture f;
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
        f.timeZone = QTimeZone("America/New_York");
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
        using Change = std::function<void(DashboardModel &)>;
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
