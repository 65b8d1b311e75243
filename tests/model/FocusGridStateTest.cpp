#include "app/model/FocusGridContent.h"
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
        QCOMPARE(f.names(), "billing-api atlas zeta");
        QCOMPARE(f.figures(), "3 2 4");
        const ProjectCard &atlas = f.cards()[1];
        QCOMPARE(atlas.running + "|" + atlas.completed + "|" + atlas.count,
                 "1 进行中|1 已完成|2 个任务");
        QCOMPARE(atlas.updated, "最近更新 5 分钟前");
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
        QCOMPARE(f.content.message(), "Orvik 产生任务后，项目会自动出现在这里。");
        f.show(threeProjects());
        f.model.refresh();
        f.settle();
        QCOMPARE(f.grid.face(), FocusGridState::Grid);
        QTRY_VERIFY(!f.model.isLoading());
    }

    void whatFadesOutKeepsWhatItShows() {
        GridFixture f;
        const QAbstractItemModelTester tester(f.content.cards());
        f.show(threeProjects());
        f.content.setProperty("live", false);
        f.grid.setLive(false);
        f.show({});
        QCOMPARE(f.names() + " " + f.figures(), "billing-api atlas zeta 3 2 4");
        f.grid.setLive(true);
        f.settle();
        QCOMPARE(f.figures(), "0 0 0");
    }
};

QTEST_GUILESS_MAIN(FocusGridStateTest)
#include "FocusGridStateTest.moc"
