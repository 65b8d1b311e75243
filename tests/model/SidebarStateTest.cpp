#include "app/model/SidebarState.h"

#include "app/model/ProjectNavigation.h"
#include "tests/model/ModelFixture.h"

#include <QAbstractItemModelTester>

using namespace tallyview;
using namespace tallyview::test;

namespace {

struct SidebarFixture : ModelFixture {
    SidebarFixture() {
        sidebar.setModel(&model);
        navigation.setModel(&model);
    }

    const ProjectRowList &rows() {
        return static_cast<const ProjectRowList &>(*navigation.projects());
    }
    /// Everything that the navigation shows, as one text.
    QString shown() {
        QCoreApplication::processEvents();
        QStringList parts{navigation.threadCount(), navigation.todayCount(),
                          navigation.pinnedCount(), navigation.archivedCount()};
        parts.append(navigation.allProjects() ? "[all]" : "all");
        parts.append(navigation.pinnedOnly() ? "[pinned]" : "pinned");
        for (const ProjectRow &row : rows().rows()) {
            const QString text = row.code + u':' + row.name + u':' + row.count;
            parts.append(row.selected ? u'[' + text + u']' : text);
        }
        return parts.join(u' ');
    }
    QString filters() const {
        return QString::fromStdString(std::string(rawValue(model.statusFilter())) + " " +
                                      std::string(rawValue(model.recencyFilter())) + " " +
                                      model.selectedProject().value_or("-") +
                                      (model.pinnedOnly() ? " pinned" : ""));
    }

    SidebarState sidebar;
    ProjectNavigation navigation;
};

} // namespace

class SidebarStateTest : public QObject {
    Q_OBJECT

private slots:
    void showsProjectsAndCounts() {
        SidebarFixture f;
        const QAbstractItemModelTester tester(
            f.navigation.projects(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(f.shown(), "0 0 0 0 [all] pinned");
        f.show({{.id = "a"},
                {.id = "b", .age = 1, .cwd = "/src/data-kit"},
                {.id = "c", .age = 90'000, .cwd = "/src/data-kit", .archived = true},
                {.id = "d", .age = 2, .cwd = "/src/sub", .subagent = true}});
        f.model.togglePin(f.thread("a"));
        QCOMPARE(f.shown(), "3 2 1 1 [all] pinned DK:data-kit:2 ATL:atlas:1");
        QCOMPARE(f.navigation.allProjectsLabel(), "全部项目，共 3 个任务");
        QCOMPARE(f.sidebar.projectCount() + " " + f.sidebar.runningCount(), "2 2");
    }

    void listsTwelveProjects() {
        SidebarFixture f;
        std::vector<Sample> samples;
        for (int i = 0; i < 15; ++i) {
            // Project i has one thread more than project i + 1.
            for (int n = 0; n < 15 - i; ++n) {
                samples.push_back(
                    {.id = std::to_string(100 * i + n), .cwd = "/src/p" + std::to_string(i)});
            }
        }
        f.show(samples);
        f.shown();
        QCOMPARE(f.rows().rowCount(), 12);
        QCOMPARE(f.rows().row(0).name, "p0");
        f.navigation.choose(11);
        QVERIFY(f.shown().endsWith("[P11:p11:4]"));
    }

    void choosesAProjectAndGoesBack() {
        SidebarFixture f;
        f.show({{.id = "a"}, {.id = "b", .cwd = "/src/beta"}});
        f.shown();
        f.navigation.choose(1);
        QCOMPARE(f.shown(), "2 2 0 0 all pinned ATL:atlas:1 [BET:beta:1]");
        f.navigation.choose(0);
        QCOMPARE(f.shown(), "2 2 0 0 all pinned [ATL:atlas:1] BET:beta:1");
        f.navigation.choose(0);
        QCOMPARE(f.shown(), "2 2 0 0 [all] pinned ATL:atlas:1 BET:beta:1");
        f.navigation.choose(1);
        f.navigation.chooseAllProjects();
        QCOMPARE(f.shown(), "2 2 0 0 [all] pinned ATL:atlas:1 BET:beta:1");
    }

    void shortcutsSetFiltersAndKeepTheProject() {
        SidebarFixture f;
        f.model.setSelectedProject("atlas");
        f.model.setRecencyFilter(TaskRecencyFilter::week);
        f.navigation.togglePinnedOnly();
        QCOMPARE(f.filters(), "running week atlas pinned");
        f.navigation.showToday();
        QCOMPARE(f.filters(), "running today atlas");
        f.navigation.togglePinnedOnly();
        f.navigation.togglePinnedOnly();
        QCOMPARE(f.filters(), "running today atlas");
        f.navigation.togglePinnedOnly();
        f.navigation.showArchived();
        QCOMPARE(f.filters(), "completed older atlas");
    }

    void tellsWhetherTheDatabaseWasRead() {
        SidebarFixture f;
        QCOMPARE(f.sidebar.databaseLabel(), "SQLite · 本机只读");
        f.refresh();
        f.shown();
        QCOMPARE(f.sidebar.databaseLabel(), "读取失败");
        QVERIFY(f.sidebar.readFailed());
        f.show({{.id = "a"}});
        f.shown();
        QCOMPARE(f.sidebar.databaseLabel(), "SQLite · 本机只读");
    }

    void keepsItsStateWhileItIsReplaced() {
        SidebarFixture f;
        f.show({{.id = "a"}});
        f.shown();
        f.navigation.choose(0);
        const QString before = f.shown();
        f.model.setSelectedProject(std::nullopt);
        f.navigation.setProperty("live", false);
        f.sidebar.setProperty("live", false);
        f.show({{.id = "b", .cwd = "/src/beta"}, {.id = "c", .cwd = "/src/gamma"}});
        QCOMPARE(f.shown(), before);
        QCOMPARE(f.sidebar.projectCount(), "1");
    }

    void longNamesFitTheScreenAndStayDistinct() {
        SidebarFixture f;
        const std::string name(3000, 'n');
        f.show(
            {{.id = "a", .cwd = "/src/" + name + "1"}, {.id = "b", .cwd = "/src/" + name + "2"}});
        f.shown();
        QCOMPARE(f.rows().row(0).name, QString(2000, u'n'));
        f.navigation.choose(1);
        QCOMPARE(QString::fromStdString(*f.model.selectedProject()), f.rows().row(1).key);
        f.shown();
        QVERIFY(!f.rows().row(0).selected && f.rows().row(1).selected);
    }
};

QTEST_GUILESS_MAIN(SidebarStateTest)

#include "SidebarStateTest.moc"
