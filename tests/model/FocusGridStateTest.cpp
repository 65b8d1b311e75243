#include "app/model/FocusGridContent.h"
#include "app/model/FocusProject.h"
#include "tests/model/ModelFixture.h"

#include <QAbstractItemModelTester>

using namespace tallyview;
using namespace tallyview::test;

namespace {

struct GridFixture : ModelFixture {
    GridFixture() {
        grid.setModel(&model);
        content.setGrid(&grid);
    }

    void settle() { QCoreApplication::processEvents(); }
    const std::vector<ProjectCard> &cards() {
        return static_cast<ProjectCardList *>(content.cards())->rows();
    }
    QString names() {
        QStringList result;
        for (const ProjectCard &card : cards()) {
            result.append(card.name);
        }
        return result.join(u' ');
    }
    QString figures() const {
        return QStringList{grid.projectCount(), grid.runningCount(), grid.totalCount()}.join(u' ');
    }

    FocusGridState grid;
    FocusGridContent content;
};

std::vector<Sample> threeProjects() {
    return {{.id = "a", .age = 7200},
            {.id = "b", .age = 300, .running = false},
            {.id = "c", .age = 60, .cwd = "/src/billing-api"},
            {.id = "d", .age = std::nullopt, .running = false, .cwd = "/src/zeta"},
            {.id = "e", .age = 10, .cwd = "/src/zeta", .subagent = true}};
}

} // namespace

class FocusGridStateTest : public QObject {
    Q_OBJECT

private slots:
    void aCardTellsAllOfItsProject() {
        GridFixture f;
        f.show(threeProjects());
        f.settle();
        QCOMPARE(f.names(), "billing-api atlas zeta");
        QCOMPARE(f.figures(), "3 2 4");
        const ProjectCard &atlas = f.cards()[1];
        QCOMPARE(atlas.code, "ATL");
        QCOMPARE(atlas.updated, "最近更新 5 分钟前");
        QCOMPARE(atlas.running + "|" + atlas.completed + "|" + atlas.count,
                 "1 进行中|1 已完成|2 个任务");
        QCOMPARE(atlas.label, "atlas，1 个进行中，2 个任务");
        QCOMPARE(atlas.helpText, "进入 atlas 的任务动态");
        QCOMPARE(f.cards()[2].updated, "最近更新 时间未知");
    }

    void theFaceFollowsWhatWasRead() {
        GridFixture f;
        QCOMPARE(f.grid.face(), FocusGridState::Empty);
        f.model.refresh();
        f.settle();
        QCOMPARE(f.grid.face(), FocusGridState::Loading);
        QTRY_VERIFY(!f.model.isLoading());
        f.settle();
        QCOMPARE(f.grid.face(), FocusGridState::Empty);
        QCOMPARE(f.content.message(), QString::fromStdString(*f.model.errorMessage()));
        f.show({});
        f.settle();
        QCOMPARE(f.content.message(), "Orvik 产生任务后，项目会自动出现在这里。");
        f.show(threeProjects());
        f.model.refresh();
        f.settle();
        QCOMPARE(f.grid.face(), FocusGridState::Grid);
        QTRY_VERIFY(!f.model.isLoading());
    }

    void aRefreshKeepsTheCardsThatStay() {
        GridFixture f;
        QAbstractItemModelTester tester(f.content.cards());
        f.show(threeProjects());
        f.settle();
        QSignalSpy removed(f.content.cards(), &QAbstractItemModel::rowsRemoved);
        f.show({{.id = "d", .age = 0, .cwd = "/src/zeta"},
                {.id = "a", .age = 7200},
                {.id = "c", .age = 60, .cwd = "/src/billing-api"}});
        f.settle();
        QCOMPARE(f.names(), "zeta billing-api atlas");
        QCOMPARE(removed.count(), 0);
    }

    void whatIsReplacedKeepsWhatItShows() {
        GridFixture f;
        f.show(threeProjects());
        f.settle();
        f.content.setProperty("live", false);
        f.show({});
        f.settle();
        QCOMPARE(f.names(), "billing-api atlas zeta");
        QCOMPARE(f.figures(), "0 0 0");
        f.grid.setLive(false);
        f.show(threeProjects());
        f.settle();
        QCOMPARE(f.figures(), "0 0 0");
        f.grid.setLive(true);
        f.settle();
        QCOMPARE(f.figures(), "3 2 4");
    }

    void openingAProjectFiltersAndGoingBackShowsAll() {
        GridFixture f;
        FocusProject project(f.model);
        f.show(threeProjects());
        QCOMPARE(project.title(), "");
        f.model.setQuery("task");
        project.open("atlas");
        QCOMPARE(project.title(), "atlas · 任务动态");
        QCOMPARE(f.visible(), "a");
        // Elsewhere another project is selected: this one stays open.
        f.model.setSelectedProject("zeta");
        QCOMPARE(project.title(), "atlas · 任务动态");
        project.close();
        QCOMPARE(project.title(), "");
        QCOMPARE(f.visible(), "c a");
        QCOMPARE(f.model.query(), "task");
    }
};

QTEST_GUILESS_MAIN(FocusGridStateTest)
#include "FocusGridStateTest.moc"
