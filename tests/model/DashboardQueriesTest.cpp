#include "tests/support/ModelFixture.h"

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
        {.id = "sunny", .age = 4 * day},
        {.id = "friday", .age = 6 * day + 12 * hour},
        {.id = "thursday", .age = 6 * day + 12 * hour + 1},
        {.id = "timeless", .age = std::nullopt, .cwd = "/src/gamma"},
    };
}

/// Sets the filters named, and no others.
void choose(DashboardModel &model, const QString &filters) {
    model.clearFilters();
    model.setNewestFirst(!filters.contains("oldest first"));
    for (const QString &filter : filters.split(", ")) {
        const std::string value = filter.section(u'=', 1).toStdString();
        filter == "all"                 ? model.setStatusFilter(TaskStatusFilter::all)
        : filter == "completed"         ? model.setStatusFilter(TaskStatusFilter::completed)
        : filter == "recent"            ? model.setRecencyFilter(TaskRecencyFilter::recent)
        : filter == "week"              ? model.setRecencyFilter(TaskRecencyFilter::week)
        : filter == "older"             ? model.setRecencyFilter(TaskRecencyFilter::older)
        : filter == "subagents"         ? model.setIncludeSubagents(true)
        : filter == "pinned"            ? model.setPinnedOnly(true)
        : filter.startsWith("source=")  ? model.setSource(value)
        : filter.startsWith("query=")   ? model.setQuery(value)
        : filter.startsWith("project=") ? model.setSelectedProject(value)
                                        : void();
    }
}

QString groups(const DashboardModel &model) {
    QStringList result;
    for (const ThreadTimeGroup &group : model.timeGroups()) {
        result.append(group.title.c_str() + (": " + ModelFixture::ids(group.threads)));
    }
    return result.join(" | ");
}

/// Each project with figures of it.
template <class Project, class... Figures>
QString listed(const std::vector<Project> &projects, Figures... figures) {
    QStringList result;
    for (const Project &project : projects) {
        result.append(project.name.c_str() + (QString() + ... + QString::number(project.*figures)));
    }
    return result.join(u' ');
}

} // namespace

class DashboardQueriesTest : public QObject {
    Q_OBJECT

private slots:
    void filtersDecideWhatIsVisible() {
        const std::pair<const char *, const char *> cases[] = {
            {"", "fresh morning"},
            {"completed", "done filed"},
            {"older", "thursday"},
            {"all", "fresh done filed morning"},
            {"all, recent", "future fresh"},
            {"all, older", "thursday timeless"},
            {"all, subagents", "fresh done filed helper morning"},
            {"all, week, project=beta", "future morning"},
            {"all, week, source=vscode", "morning"},
            {"all, week, pinned", "done"},
            // Nothing but status and subagents applies to a thread without a time.
            {"all, older, pinned, project=atlas, query=unlike, source=none", "timeless"},
            // Equal times keep the store's order.
            {"all, week", "future fresh done filed morning sunday sunny friday"},
            {"all, week, oldest first", "friday sunday sunny morning filed done fresh future"},
            {"query=   ", "fresh morning"},
            {"query=  fOO\u3000", "fresh"},
            {"query=gro\u0308ße", "fresh"},
            {"query=/SRC/atl", "fresh"},
            {"query=feature/foo cli", "fresh"},
            // ß has no other lower case, nothing is a wildcard, ids are not searched, blanks count.
            {"query=GRÖSSE", ""},
            {"query=f*o", ""},
            {"query=fresh", ""},
            {"query=feature/foo  cli", ""},
        };
        ModelFixture f;
        std::vector<Sample> samples = mixed();
        samples.back().running = false;
        f.show(samples);
        f.model.togglePin(f.thread("done"));
        for (const auto &[filters, visible] : cases) {
            choose(f.model, filters);
            QCOMPARE(f.visible(), visible);
        }
    }

    void groupsFollowTheClock() {
        ModelFixture f;
        f.show(mixed());
        choose(f.model, "all, week");
        QCOMPARE(groups(f.model),
                 "刚刚: future fresh | 今天: done filed morning | 本周: sunday sunny friday");
        choose(f.model, "all, older");
        QCOMPARE(groups(f.model), "更早: thursday timeless");
        // A clock that is set a year forward, then back: all is old, then all is to come.
        f.now += std::chrono::hours(366 * 24);
        f.refresh();
        QCOMPARE(f.model.visibleThreads().size(), 10U);
        f.now -= std::chrono::hours(2 * 366 * 24);
        f.refresh();
        QCOMPARE(groups(f.model), "更早: timeless");
        choose(f.model, "all, week");
        QCOMPARE(groups(f.model), "刚刚: " + f.visible());
        QCOMPARE(f.model.visibleThreads().size(), 9U);
        f.now += std::chrono::hours(366 * 24);
        // Shortly after midnight a thread is in two groups.
        f.show({{.id = "late", .age = 12 * hour + 10 * minute}});
        f.model.setRecencyFilter(TaskRecencyFilter::week);
        f.now -= std::chrono::hours(12) - std::chrono::minutes(30);
        QCOMPARE(groups(f.model), "刚刚: late | 本周: late");
        f.now += std::chrono::minutes(90);
        QCOMPARE(groups(f.model), "本周: late");
    }

    void countersIgnoreTheFilters() {
        ModelFixture f;
        f.show(mixed());
        const auto counters = [&m = f.model] {
            return QList<std::size_t>{m.rootThreads().size(),
                                      m.runningCount(),
                                      m.archivedCount(),
                                      m.todayCount(),
                                      m.projectCount(),
                                      m.count(TaskStatusFilter::completed),
                                      m.count(TaskStatusFilter::all)};
        };
        choose(f.model, "query=unlike, pinned, subagents");
        QCOMPARE(counters(), (QList<std::size_t>{10, 8, 1, 4, 3, 2, 10}));
        f.model.setSelectedProject("beta");
        QCOMPARE(counters(), (QList<std::size_t>{10, 8, 1, 4, 3, 0, 2}));
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
        const auto summaries = [&f] {
            return listed(f.model.projectSummaries(), &ProjectSummary::count,
                          &ProjectSummary::runningCount, &ProjectSummary::completedCount);
        };
        QCOMPARE(listed(f.model.projects(), &ProjectCount::count),
                 "éclair2 alpha1 Beta1 omega1 zeta1");
        QCOMPARE(summaries(), "Beta110 éclair211 alpha110 omega110 zeta110");
        f.model.setIncludeSubagents(true);
        QCOMPARE(summaries(), "zeta211 Beta110 éclair211 alpha110 omega110");
        f.model.setSelectedProject("e\u0301clair");
        QCOMPARE(f.model.count(TaskStatusFilter::all), 2U);
    }

    void extraFiltersAreWhatResetTakesBack() {
        ModelFixture f;
        for (const char *filter :
             {"query= ", "source=cli", "subagents", "pinned", "completed", "week"}) {
            choose(f.model, filter);
            QVERIFY(f.model.hasExtraFilters() && f.model.hasExtraFiltersIgnoringProject());
            choose(f.model, "oldest first");
            QVERIFY(!f.model.hasExtraFilters());
        }
        f.model.clearFilters();
        QVERIFY(!f.model.newestFirst());
        f.model.setSelectedProject("atlas");
        QVERIFY(f.model.hasExtraFilters() && !f.model.hasExtraFiltersIgnoringProject());
    }
};

QTEST_GUILESS_MAIN(DashboardQueriesTest)
#include "DashboardQueriesTest.moc"
