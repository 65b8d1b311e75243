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

    void choosesOneOfTwelveProjects() {
        SidebarFixture f;
        std::vector<Sample> samples;
        for (int i = 0; i < 15; ++i) {
            // Long names are cut for the screen and stay distinct.
            const std::string name = i < 2 ? std::string(3000, 'a') : "p";
            samples.push_back(
                {.id = std::to_string(i), .age = i, .cwd = "/src/" + name + std::to_string(i)});
        }
        f.show(samples);
        QCOMPARE(f.rows().rowCount(), 12);
        QCOMPARE(f.rows().row(0).name, QString(2000, u'a'));
        const auto chosen = [&f] {
            f.shown();
            QString result = f.navigation.allProjects() ? "all" : "";
            for (const ProjectRow &row : f.rows().rows()) {
                result += row.selected ? row.code : QString();
            }
            return result;
        };
        f.navigation.choose(1);
        QVERIFY(f.rows().row(1).key.endsWith("a1"));
        QCOMPARE(QString::fromStdString(*f.model.selectedProject()), f.rows().row(1).key);
        f.navigation.choose(11);
        QCOMPARE(chosen(), "P6");
        f.navigation.choose(11);
        QCOMPARE(chosen(), "all");
        f.navigation.choose(0);
        f.navigation.chooseAllProjects();
        QCOMPARE(chosen(), "all");
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
        QCOMPARE(f.sidebar.databaseLabel(), "读取失败");
        QVERIFY(f.sidebar.readFailed());
        f.show({{.id = "a"}});
        QCOMPARE(f.sidebar.databaseLabel(), "SQLite · 本机只读");
    }
};

QTEST_GUILESS_MAIN(SidebarStateTest)

#include "SidebarStateTest.moc"
