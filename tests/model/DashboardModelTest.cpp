#include "tests/support/ModelFixture.h"

#include <QElapsedTimer>

#include <sqlite3.h>

#include <sys/wait.h>
#include <unistd.h>

using namespace tallyview;
using namespace tallyview::test;

class DashboardModelTest : public QObject {
    Q_OBJECT

private slots:
    void aRefreshAppliesTheListInOrder() {
        ModelFixture f;
        f.write({{.id = "a"}, {.id = "b"}});
        QString states;
        connect(&f.model, &DashboardModel::aboutToChange, this, [&] {
            states += QString::number(f.model.threads().size()) + (f.model.isLoading() ? "L" : "") +
                      (f.model.lastSyncedAt() ? "S" : "") + f.selected() + u' ';
        });
        QSignalSpy finished(&f.model, &DashboardModel::refreshFinished);
        f.model.refresh();
        f.refresh(); // overlaps: dropped
        QCOMPARE(finished.count(), 1);
        // isLoading, threads, errorMessage, lastSyncedAt, selection, isLoading
        QCOMPARE(states, "0none 0Lnone 2Lnone 2Lnone 2LSnone 2LSa ");
        QCOMPARE(f.model.lastSyncedAt(), f.now);
    }

    void completedTasksAreAnnouncedOnceWhileLoading() {
        ModelFixture f;
        f.show({{.id = "a"}, {.id = "b"}, {.id = "c"}});
        QString announced;
        connect(&f.model, &DashboardModel::taskCompleted, this, [&](const ThreadRecord &thread) {
            announced += f.ids({thread}) + (f.model.isLoading() ? "L" : "-") + f.selected() + u' ';
        });
        f.show({{.id = "a", .running = false}, {.id = "b"}, {.id = "c", .archived = true}});
        f.refresh();
        QCOMPARE(announced, "aLb cLb ");
    }

    void aFailureKeepsTheLastGoodList() {
        ModelFixture f;
        f.show({{.id = "a"}});
        std::filesystem::remove(f.databasePath());
        f.now += std::chrono::seconds(60);
        f.refresh();
        QCOMPARE(f.visible() + f.selected(), "aa");
        QCOMPARE(f.model.lastSyncedAt(), f.now - std::chrono::seconds(60));
        QCOMPARE(f.model.errorMessage(), "找不到 Orvik 状态数据库：" + f.databasePath().string());
        f.show({{.id = "b"}});
        QVERIFY(!f.model.errorMessage());
        QCOMPARE(f.selected(), "b");
    }

    void monitoringRefreshesNowAndAfterEachPause() {
        ModelFixture f;
        f.write({{.id = "a"}});
        DashboardModel model(OrvikThreadStore(f.databasePath()),
                             {.defaults = f.defaults,
                              .urlOpener = f.opener,
                              .refreshInterval = std::chrono::milliseconds(60)});
        QSignalSpy finished(&model, &DashboardModel::refreshFinished);
        model.startMonitoring();
        model.startMonitoring();
        QVERIFY(model.isLoading());
        QVERIFY(finished.wait());
        QElapsedTimer pause;
        pause.start();
        QVERIFY(finished.wait());
        QVERIFY2(pause.elapsed() >= 55, "the pause counts from the end of a refresh");
        QCOMPARE(finished.count(), 2);
    }

    void pinsPersistById() {
        ModelFixture f;
        f.show({{.id = "a"}, {.id = "b"}});
        f.model.togglePin(f.thread("b"));
        QCOMPARE(f.defaults.value("pinnedThreadIDs").toStringList(), QStringList("b"));
        f.model.setPinnedOnly(true);
        QCOMPARE(f.selected(), "b");
        f.model.togglePin(f.thread("b"));
        QCOMPARE(f.selected(), "none");
        QVERIFY(f.defaults.value("pinnedThreadIDs").toStringList().isEmpty());

        f.defaults.setValue("pinnedThreadIDs", QStringList{"x", "y", "x"});
        const DashboardModel restarted(OrvikThreadStore({}),
                                       {.defaults = f.defaults, .urlOpener = f.opener});
        QCOMPARE(restarted.pinnedIDs().size(), 2U);
    }

    void theSelectionStaysOnAVisibleThread() {
        ModelFixture f;
        f.show({{.id = "a"}, {.id = "b", .age = 10}, {.id = "c", .age = 20, .cwd = "/src/beta"}});
        QCOMPARE(f.selected(), "a");
        f.model.setSelectedThreadID("c");
        f.model.setSelectedProject("atlas");
        QCOMPARE(f.selected(), "a");
        f.model.setNewestFirst(false);
        QCOMPARE(f.selected(), "a");
        f.model.setProject("beta");
        QCOMPARE(f.selected(), "c");
        f.model.setProject("beta");
        QVERIFY(!f.model.selectedProject());
        f.model.setQuery("nothing like it");
        QCOMPARE(f.selected(), "none");
        f.model.clearFilters();
        QCOMPARE(f.selected(), "c"); // the list is oldest first now: that order is kept
        f.model.setSelectedThreadID("not there");
        QCOMPARE(f.selected(), "not there");
        f.refresh();
        QCOMPARE(f.selected(), "c");
    }

    void movingTheSelectionWrapsAround() {
        ModelFixture f;
        f.model.moveSelection(-5); // an empty list: nothing to move through
        f.show({{.id = "a"}, {.id = "b", .age = 10}, {.id = "c", .age = 20}});
        QString path;
        for (const std::int64_t offset : {1, 1, 1, -1, -3, 7}) {
            f.model.moveSelection(offset);
            path += f.selected();
        }
        f.model.setSelectedThreadID(std::nullopt);
        f.model.moveSelection(-1);
        QCOMPARE(path + f.selected(), "bcaccac");
        // Two steps forward do not excuse four back: that stops the process.
        const pid_t child = fork();
        if (child == 0) {
            ::signal(SIGABRT, SIG_DFL);
            f.model.moveSelection(-4);
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT);
    }

    void stoppingEndsAQueryAndDoesNotWaitForALock() {
        using std::chrono::milliseconds;
        const std::pair<const char *, bool> cases[] = {
            {"ALTER TABLE threads RENAME TO others; CREATE VIEW threads AS SELECT * FROM others"
             " WHERE 2 IN (WITH n AS (SELECT 1 AS i UNION ALL SELECT i FROM n) SELECT i FROM n)",
             true},
            {"BEGIN EXCLUSIVE", false},
        };
        for (const auto &[sql, ends] : cases) {
            ModelFixture f;
            f.write({{.id = "a"}});
            sqlite3 *writer = nullptr;
            sqlite3_open(f.databasePath().c_str(), &writer);
            QCOMPARE(sqlite3_exec(writer, sql, nullptr, nullptr, nullptr), SQLITE_OK);
            f.model.refresh();
            QTest::qWait(100);
            QVERIFY(f.model.isLoading());
            const auto start = std::chrono::steady_clock::now();
            QCOMPARE(f.model.stopReading(milliseconds(200)), ends);
            QVERIFY(std::chrono::steady_clock::now() - start < milliseconds(400));
            sqlite3_close(writer);
        }
    }
};

QTEST_GUILESS_MAIN(DashboardModelTest)
#include "DashboardModelTest.moc"
