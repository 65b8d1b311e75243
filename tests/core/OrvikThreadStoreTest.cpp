#include "core/OrvikThreadStore.h"

#include "tests/core/AgentDatabase.h"
#include "tests/support/TemporaryHome.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tallyview {
namespace {

class OrvikThreadStoreTest : public testing::Test {
protected:
    OrvikThreadStoreTest() { writer.execute(schema); }

    std::vector<ThreadRecord> listed(std::span<const ThreadRecord> known = {}) const {
        return store.listThreads(known).value();
    }

    tests::TemporaryHome folder;
    std::string path = folder.path("state.sqlite");
    Writer writer{path};
    OrvikThreadStore store{path};
};

Instant at(double seconds) { return Instant(Instant::duration(seconds)); }

TEST_F(OrvikThreadStoreTest, turnsARowIntoARecord) {
    const std::string rollout = folder.write(
        "rollout", "{\"type\":\"event_msg\",\"payload\":{\"type\":\"task_started\"}}\n");
    writer.execute("INSERT INTO threads VALUES ('t-1', ' \n call 13812345678\n', "
                   "' token=abcdefgh1\n', ' /src/atlas/ ', '  VSCode ', ' gpt ', 'high', 'main', "
                   "9007199254740993, 5, 1700000000123, 1, 2, 3, 1700000000999, 0, '', '', '" +
                   rollout + "')");
    const auto before = tests::openDescriptors();
    const auto threads = listed();
    EXPECT_EQ(tests::openDescriptors(), before);
    const ThreadRecord expected({.id = "t-1",
                                 .title = "call 138****5678",
                                 .preview = "token=[REDACTED]",
                                 .project = "atlas",
                                 .projectPath = " /src/atlas/ ",
                                 .source = "vscode",
                                 .model = " gpt ",
                                 .reasoningEffort = "high",
                                 .branch = "main",
                                 .tokensUsed = 9'007'199'254'740'993,
                                 .createdAt = at(1'700'000'000.123),
                                 .updatedAt = at(1'700'000'000.999),
                                 .runState = ThreadRunState::running});
    EXPECT_EQ(threads, std::vector{expected});
    writer.execute("UPDATE threads SET archived = -1");
    EXPECT_EQ(listed().at(0)->runState, ThreadRunState::completed);
}

TEST_F(OrvikThreadStoreTest, makesEachValueAFieldOfTheRecord) {
    struct Case {
        std::string columns, values; ///< of a row that is NULL elsewhere
        ThreadRecord::Fields fields; ///< what is not as in a row of nulls
    };
    const std::string allUpdates = "recency_at_ms, updated_at_ms, recency_at, updated_at";
    const std::vector<Case> cases{
        {"id", "NULL", {}},
        {"title", "' \n\t'", {}},
        {"title", "'ab' || char(0) || 'cd'", {.title = "ab"}},
        {"id", "x'61ff'", {.id = "a\uFFFD"}},
        {"title", "CAST(x'61ff62e69687' AS TEXT)", {.title = "a\uFFFDb文"}},
        {"title", "42", {.title = "42"}},
        {"title", "x'e6968700ff'", {.title = "文"}},
        {"title", "zeroblob(1000000)", {}},
        {"tokens_used", "'12 apples'", {.tokensUsed = 12}},
        {"tokens_used", "1e9", {.tokensUsed = 1'000'000'000}},
        {"tokens_used", "-1e99", {.tokensUsed = std::numeric_limits<std::int64_t>::min()}},
        {"created_at", "9223372036854775807 + 1", {.createdAt = at(9'223'372'036'854'775.807)}},
        {"created_at", "'253402300799'", {.createdAt = at(253'402'300'799)}}, // in the year 9999
        {"created_at", "-62167219200", {}},                                   // in the year 0
        {"source", "char(10) || ' CLI' || char(9)", {.source = "cli"}},
        {"source", "'ABCDEFGHIJKLMNOPQRSTUVWXY'", {}},
        {"source",
         "'abcdefghijklmnopqrstuvwE' || char(769)",
         {.source = "abcdefghijklmnopqrstuvwe\u0301"}},
        {"source", "' ' || char(9, 160) || '{\"'", {.source = "subagent", .isSubagent = true}},
        {"source", "char(10) || '{}'", {.source = "{}"}},
        {"source", "'{' || char(769)", {.source = "{\u0301"}},
        {"source, agent_role", "'cli', ' '", {.source = "subagent", .isSubagent = true}},
        {"source, agent_path", "'cli', 'a/b'", {.source = "subagent", .isSubagent = true}},
        {"created_at_ms, created_at", "0, 1700000000", {.createdAt = at(1.7e9)}},
        {"created_at_ms, created_at", "1700000000000, 5", {.createdAt = at(1.7e9)}},
        {"created_at_ms, created_at", "-1, 0", {}},
        {"created_at_ms", "999999999999", {.createdAt = at(999'999'999'999.0)}},
        {"created_at", "1000000000000", {.createdAt = at(1e9)}},
        {allUpdates, "0, 0, 1700000500, 1700000000", {.updatedAt = at(1'700'000'500)}},
        {allUpdates, "-7, 1700000000001, 3, 4", {.updatedAt = at(1'700'000'000.001)}},
        {allUpdates, "-5, 0, -1, 8", {.updatedAt = at(8)}},
        {"archived", "-1", {.archived = true}},
        {"archived", "4294967296", {}},
        {"archived", "0.9", {}},
    };
    for (const Case &each : cases) {
        ThreadRecord::Fields expected = each.fields;
        expected.title = expected.title.empty() ? "未命名任务" : expected.title;
        expected.project = "未归类";
        expected.source = expected.source.empty() ? "local" : expected.source;
        writer.execute("DELETE FROM threads; INSERT INTO threads (" + each.columns + ") VALUES (" +
                       each.values + ")");
        EXPECT_EQ(listed(), std::vector{ThreadRecord(expected)})
            << each.columns << " = " << each.values;
    }
}

TEST_F(OrvikThreadStoreTest, listsTheNewestFirst) {
    EXPECT_TRUE(listed().empty());
    writer.execute(
        "INSERT INTO threads (id, recency_at_ms, updated_at_ms, updated_at, recency_at) "
        "VALUES ('a', 3000, 9000, 9, 0), ('b', 0, 5000, 1, 0), ('c', -1, NULL, 4, 9999), "
        "('d', NULL, NULL, NULL, 9999), ('e', 6000, 0, 0, 0)");
    std::string ids;
    for (const ThreadRecord &thread : listed()) {
        ids += thread.id();
    }
    EXPECT_EQ(ids, "ebcad");
}

TEST_F(OrvikThreadStoreTest, sharesTheDataOfRecordsThatStayAsTheyAre) {
    writer.execute("INSERT INTO threads (id, title, recency_at_ms) VALUES ('same', 'caf\u00e9', 3),"
                   " ('changed', 'a', 2), ('respelled', 'caf\u00e9', 1)");
    const auto before = listed();
    writer.execute("UPDATE threads SET title = 'b' WHERE id = 'changed';"
                   "UPDATE threads SET title = 'cafe\u0301' WHERE id = 'respelled';"
                   "INSERT INTO threads (id, recency_at_ms) VALUES ('new', 4)");
    std::string shared;
    for (const ThreadRecord &thread : listed(before)) {
        const bool isShared = std::ranges::any_of(
            before, [&](const ThreadRecord &known) { return &*known == &*thread; });
        shared.append(thread.id()).append(isShared ? "=" : ":").append(thread->title) += ' ';
    }
    EXPECT_EQ(shared, "new:未命名任务 same=caf\u00e9 changed:b respelled:cafe\u0301 ");
}

// Enough rows for all threads that make records, and more directories than are remembered.
TEST_F(OrvikThreadStoreTest, keepsManyRowsInOrderWithTheirFields) {
    const std::string running = folder.write(
        "running.jsonl", R"({"type": "event_msg", "payload": {"type": "task_started"}})");
    writer.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 10000) "
                   "INSERT INTO threads (id, cwd, source, updated_at, rollout_path) SELECT i, "
                   "'/src/' || iif(i % 2, 'odd', i), iif(i % 3, 'CLI', 'VSCode'), 20000 - i, "
                   "iif(i % 7 = 0, '" +
                   running + "', '/nowhere') FROM n");
    const auto threads = listed();
    ASSERT_EQ(threads.size(), 10'000U);
    for (std::size_t id = 1; id <= threads.size(); ++id) {
        const ThreadRecord &thread = threads[id - 1];
        ASSERT_EQ(thread.id(), std::to_string(id));
        ASSERT_EQ(thread->project, id % 2 == 1 ? "odd" : std::to_string(id));
        ASSERT_EQ(thread->source, id % 3 == 0 ? "vscode" : "cli");
        ASSERT_EQ(thread->runState == ThreadRunState::running, id % 7 == 0) << id;
    }
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(store.listThreads({}, stop.get_token()).error().text(), "interrupted");
}

TEST_F(OrvikThreadStoreTest, tellsWhyThereIsNoList) {
    const std::string missing = "找不到 Orvik 状态数据库：";
    const std::string unopened = "无法只读打开 Orvik 数据库：";
    const std::string unread = "无法读取 Orvik 任务：";
    const std::string dangling = folder.path("dangling");
    std::filesystem::create_symlink("nowhere", dangling);
    const std::string strange = folder.path("strange");
    Writer(strange).execute("CREATE TABLE threads (id)");
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::pair<std::string, std::string> cases[] = {
        {"", missing},
        {dangling, missing + dangling},
        {folder.path("a\xFF"), missing + folder.path("a\uFFFD")},
        {folder.path("directory"), unopened + "disk I/O error"},
        {pipe, unopened + "unable to open database file"},
        {folder.write("text", std::string(4096, 'x')), unread + "file is not a database"},
        {folder.write("empty", ""), unread + "no such table: threads"},
        {strange, unread + "no such column: title"},
    };
    std::filesystem::create_directory(folder.path("directory"));
    const std::string good = folder.path("good");
    Writer(good).execute(schema);
    const auto before = tests::openDescriptors();
    for (const auto &[where, description] : cases) {
        const OrvikThreadStore failing(where);
        const auto threads = failing.listThreads();
        ASSERT_FALSE(threads.has_value()) << where;
        EXPECT_EQ(threads.error().description(), description);
        EXPECT_EQ(tests::openDescriptors(), before) << where;
        // It turns right as soon as the cause is gone.
        if (!where.empty()) {
            std::filesystem::remove(where);
            std::filesystem::copy_file(good, where);
            EXPECT_TRUE(failing.listThreads().has_value()) << where;
        }
    }
}

TEST_F(OrvikThreadStoreTest, waitsForALockButNotForEver) {
    writer.execute("BEGIN EXCLUSIVE");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(store.listThreads().error().text(), "database is locked");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2500));
    const std::jthread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        writer.execute("COMMIT");
    });
    EXPECT_TRUE(store.listThreads().has_value());
}

/// What a file of unknown origin may hold in place of the table.
TEST_F(OrvikThreadStoreTest, aForeignSchemaDoesNoHarm) {
    const auto table = [](std::string definition) {
        return "DROP TABLE threads; CREATE TABLE threads (" + std::move(definition) +
               "); INSERT INTO threads (id, updated_at) VALUES (8, 1), ('7', '02')";
    };
    const auto view = [](const std::string &source) {
        return "INSERT INTO threads (id) VALUES (7); ALTER TABLE threads RENAME TO others;"
               "CREATE VIEW threads AS SELECT others.* FROM " +
               source;
    };
    std::string typed = columns, many = columns;
    for (std::size_t comma = 0; (comma = typed.find(',', comma)) != std::string::npos; comma += 9) {
        typed.insert(comma, " INTEGER");
    }
    for (int extra = 0; extra < 190; ++extra) {
        many += ", extra" + std::to_string(extra);
    }
    const std::string withoutTitle = columns.substr(0, 4) + columns.substr(11);
    const std::pair<std::string, std::string> cases[] = {
        {table(typed), "7"},
        {table(many), "7"},
        {table(withoutTitle), "no such column: title"},
        {table(withoutTitle + ", Title TEXT COLLATE NOCASE"), "7"},
        {table(withoutTitle + ", name"), "no such column: title"},
        {table(withoutTitle + ", title AS (hex(id))"), "7"},
        {"DROP TABLE threads", "no such table: threads"},
        {view("others"), "7"},
        {view(
             "others; CREATE TRIGGER t INSTEAD OF UPDATE ON threads BEGIN DELETE FROM others; END"),
         "7"},
        {view("others WHERE load_extension('/tmp/x')"), "unsafe use of load_extension()"},
        {view("others, pragma_database_list"),
         "unsafe use of virtual table \"pragma_database_list\""},
        {view("threads AS others"), "view threads is circularly defined"},
    };
    for (const auto &[sql, expected] : cases) {
        const std::string foreign = folder.write("foreign.sqlite", "");
        Writer(foreign).execute(schema + sql);
        const auto threads = OrvikThreadStore(foreign).listThreads();
        EXPECT_EQ(threads ? threads->at(0).id() : threads.error().text(), expected) << sql;
    }
}

/// A list is whole or refused, however few descriptors are left; a rollout file that cannot be
/// opened is like none.
TEST_F(OrvikThreadStoreTest, managesWithoutDescriptors) {
    writer.execute("INSERT INTO threads (id, rollout_path) VALUES ('a', '" +
                   folder.write("rollout", "") + "')");
    const auto before = tests::openDescriptors();
    const int lowestFree = dup(0);
    close(lowestFree);
    rlimit whole{};
    getrlimit(RLIMIT_NOFILE, &whole);
    std::string outcomes;
    for (rlim_t left = 0; left < 4; ++left) {
        const rlimit few{static_cast<rlim_t>(lowestFree) + left, whole.rlim_max};
        setrlimit(RLIMIT_NOFILE, &few);
        const auto threads = store.listThreads();
        setrlimit(RLIMIT_NOFILE, &whole);
        outcomes += (threads ? std::to_string(threads->size()) : threads.error().text()) + "; ";
    }
    EXPECT_EQ(outcomes, "unable to open database file; 1; 1; 1; ");
    EXPECT_EQ(tests::openDescriptors(), before);
}

} // namespace
} // namespace tallyview
