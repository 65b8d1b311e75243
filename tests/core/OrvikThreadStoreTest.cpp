#include "core/OrvikThreadStore.h"

#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace tallyview {
namespace {

using Kind = OrvikThreadStoreError::Kind;

/// A connection that writes, as the agent does.
class Writer {
public:
    explicit Writer(const std::string &path) {
        EXPECT_EQ(sqlite3_open(path.c_str(), &m_connection), SQLITE_OK);
    }
    ~Writer() { sqlite3_close(m_connection); }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    void execute(const std::string &sql) const {
        char *message = nullptr;
        EXPECT_EQ(sqlite3_exec(m_connection, sql.c_str(), nullptr, nullptr, &message), SQLITE_OK)
            << message << " in " << sql;
        sqlite3_free(message);
    }

private:
    sqlite3 *m_connection = nullptr;
};

constexpr const char *schema =
    "CREATE TABLE threads (id, title, preview, cwd, source, model, reasoning_effort, git_branch,"
    " tokens_used, created_at, created_at_ms, updated_at, updated_at_ms, recency_at,"
    " recency_at_ms, archived, agent_role, agent_path, rollout_path)";

class OrvikThreadStoreTest : public testing::Test {
protected:
    /// The one record of a table whose one row has these values and NULL elsewhere.
    ThreadRecord onlyRecord(const std::string &columns, const std::string &values) {
        const Writer writer(path);
        writer.execute("DROP TABLE IF EXISTS threads");
        writer.execute(schema);
        writer.execute("INSERT INTO threads (" + columns + ") VALUES (" + values + ")");
        const auto threads = store.listThreads();
        EXPECT_TRUE(threads.has_value() && threads->size() == 1) << values;
        return threads.value().at(0);
    }

    void expectFailure(const std::string &where, Kind kind, const std::string &description) const {
        const auto before = tests::openDescriptors();
        const auto threads = OrvikThreadStore(where).listThreads();
        ASSERT_FALSE(threads.has_value()) << where;
        EXPECT_EQ(threads.error().kind(), kind) << where;
        EXPECT_EQ(threads.error().description(), description);
        EXPECT_EQ(tests::openDescriptors(), before) << where;
    }

    tests::TemporaryHome folder;
    std::string path = folder.path("state.sqlite");
    OrvikThreadStore store{path};
};

Instant at(double seconds) { return Instant(Instant::duration(seconds)); }

TEST_F(OrvikThreadStoreTest, turnsARowIntoARecord) {
    const std::string rollout = folder.write(
        "rollout", "{\"type\":\"event_msg\",\"payload\":{\"type\":\"task_started\"}}\n");
    const Writer writer(path);
    writer.execute(schema);
    writer.execute("INSERT INTO threads VALUES ('t-1', ' \n call 13812345678\n', "
                   "' token=abcdefgh1\n', ' /src/atlas/ ', '  VSCode ', ' gpt ', 'high', 'main', "
                   "9007199254740993, 5, 1700000000123, 1, 2, 3, 1700000000999, 0, '', '', '" +
                   rollout + "')");
    const auto before = tests::openDescriptors();
    const auto threads = store.listThreads();
    EXPECT_EQ(tests::openDescriptors(), before);
    ASSERT_TRUE(threads.has_value());
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
                                 .archived = false,
                                 .isSubagent = false,
                                 .runState = ThreadRunState::running});
    EXPECT_EQ(*threads, std::vector{expected});
    writer.execute("UPDATE threads SET archived = -1");
    const ThreadRecord archived = store.listThreads().value().at(0);
    EXPECT_TRUE(archived->archived);
    EXPECT_EQ(archived->runState, ThreadRunState::completed);
}

TEST_F(OrvikThreadStoreTest, makesEachValueAFieldOfTheRecord) {
    struct Case {
        const char *columns, *values;
        ThreadRecord::Fields fields; ///< what is not as in a row of nulls
    };
    const std::vector<Case> cases{
        {"id", "NULL", {}},
        {"title", "' \n\t'", {}},
        {"title", "'api_key: abcdefgh12345678'", {.title = "api_key: [REDACTED]"}},
        {"title", "'ab' || char(0) || 'cd'", {.title = "ab"}},
        {"title", "CAST(x'61ff62e69687' AS TEXT)", {.title = "a\uFFFDb文"}},
        {"title", "x'6162'", {.title = "ab"}},
        {"title", "42", {.title = "42"}},
        {"tokens_used", "'12 apples'", {.tokensUsed = 12}},
        {"tokens_used", "-3.9", {.tokensUsed = -3}},
        {"source", "''", {}},
        {"source", "char(10) || ' CLI' || char(9)", {.source = "cli"}},
        {"source", "'ABCDEFGHIJKLMNOPQRSTUVWXY'", {}},
        {"source",
         "'abcdefghijklmnopqrstuvwE' || char(769)",
         {.source = "abcdefghijklmnopqrstuvwe\u0301"}},
        {"source",
         "' ' || char(9, 160) || '{\"x\":1}'",
         {.source = "subagent", .isSubagent = true}},
        {"source", "char(10) || '{}'", {.source = "{}"}},
        {"source", "'{' || char(769)", {.source = "{\u0301"}},
        {"source, agent_role", "'cli', ' '", {.source = "subagent", .isSubagent = true}},
        {"source, agent_path", "'cli', 'a/b'", {.source = "subagent", .isSubagent = true}},
        {"agent_role, agent_path", "'', ''", {}},
        {"created_at_ms, created_at", "0, 1700000000", {.createdAt = at(1.7e9)}},
        {"created_at_ms, created_at", "1700000000000, 5", {.createdAt = at(1.7e9)}},
        {"created_at_ms, created_at", "-1, 0", {}},
        {"created_at_ms", "999999999999", {.createdAt = at(999'999'999'999.0)}},
        {"created_at", "1000000000000", {.createdAt = at(1e9)}},
        {"recency_at_ms, updated_at_ms, recency_at, updated_at",
         "0, 0, 1700000500, 1700000000",
         {.updatedAt = at(1'700'000'500)}},
        {"recency_at_ms, updated_at_ms, recency_at, updated_at",
         "-7, 1700000000001, 3, 4",
         {.updatedAt = at(1'700'000'000.001)}},
        {"recency_at_ms, updated_at", "-5, -6", {}},
        {"updated_at", "8", {.updatedAt = at(8)}},
        {"archived", "-1", {.archived = true}},
        {"archived", "4294967296", {}},
        {"archived", "4294967297", {.archived = true}},
        {"archived", "'yes'", {}},
        {"archived", "0.9", {}},
    };
    for (const Case &each : cases) {
        ThreadRecord::Fields expected = each.fields;
        expected.title = expected.title.empty() ? "未命名任务" : expected.title;
        expected.project = "未归类";
        expected.source = expected.source.empty() ? "local" : expected.source;
        EXPECT_TRUE(onlyRecord(each.columns, each.values) == ThreadRecord(expected))
            << each.columns << " = " << each.values;
    }
}

TEST_F(OrvikThreadStoreTest, listsTheNewestFirst) {
    const Writer writer(path);
    writer.execute(schema);
    writer.execute(
        "INSERT INTO threads (id, recency_at_ms, updated_at_ms, updated_at, recency_at) "
        "VALUES ('a', 3000, 9000, 9, 0), ('b', 0, 5000, 1, 0), ('c', -1, NULL, 4, 9999), "
        "('d', NULL, NULL, NULL, 9999), ('e', 6000, 0, 0, 0)");
    std::string ids;
    const auto threads = store.listThreads().value();
    for (const ThreadRecord &thread : threads) {
        ids += thread.id();
    }
    EXPECT_EQ(ids, "ebcad");
    writer.execute("DELETE FROM threads");
    EXPECT_TRUE(store.listThreads().value().empty());
}

TEST_F(OrvikThreadStoreTest, sharesTheDataOfRecordsThatStayAsTheyAre) {
    const Writer writer(path);
    writer.execute(schema);
    writer.execute("INSERT INTO threads (id, title, recency_at_ms) VALUES ('same', 'caf\u00e9', 3),"
                   " ('changed', 'a', 2), ('respelled', 'caf\u00e9', 1)");
    const auto before = store.listThreads().value();
    writer.execute("UPDATE threads SET title = 'b' WHERE id = 'changed'");
    // Canonically equivalent, but other bytes.
    writer.execute("UPDATE threads SET title = 'cafe\u0301' WHERE id = 'respelled'");
    writer.execute("INSERT INTO threads (id, recency_at_ms) VALUES ('new', 4)");
    const auto after = store.listThreads(before).value();

    std::string shared;
    for (const ThreadRecord &thread : after) {
        const bool isShared = std::ranges::any_of(
            before, [&](const ThreadRecord &known) { return &*known == &*thread; });
        shared += thread.id() + (isShared ? "=" : ":") + thread->title + " ";
    }
    EXPECT_EQ(shared, "new:未命名任务 same=caf\u00e9 changed:b respelled:cafe\u0301 ");
}

// Enough rows for all threads that make records.
TEST_F(OrvikThreadStoreTest, keepsManyRowsInOrderWithTheirStates) {
    const std::string running = folder.write(
        "running.jsonl", R"({"type": "event_msg", "payload": {"type": "task_started"}})");
    const Writer writer(path);
    writer.execute(schema);
    writer.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 3000) "
                   "INSERT INTO threads (id, updated_at, rollout_path) SELECT i, 10000 - i, "
                   "iif(i % 7 = 0, '" +
                   running + "', '/nowhere') FROM n");
    const auto threads = store.listThreads().value();
    ASSERT_EQ(threads.size(), 3000U);
    for (std::size_t i = 0; i < threads.size(); ++i) {
        const std::size_t id = i + 1;
        ASSERT_EQ(threads[i].id(), std::to_string(id));
        ASSERT_EQ(threads[i]->runState == ThreadRunState::running, id % 7 == 0) << id;
    }
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(store.listThreads({}, stop.get_token()).error().text(), "interrupted");
    EXPECT_TRUE(std::ranges::equal(store.listThreads(threads).value(), threads, {},
                                   &ThreadRecord::operator->, &ThreadRecord::operator->));
}

TEST_F(OrvikThreadStoreTest, tellsWhyThereIsNoList) {
    expectFailure(path, Kind::databaseMissing, "找不到 Orvik 状态数据库：" + path);
    expectFailure("", Kind::databaseMissing, "找不到 Orvik 状态数据库：");
    std::filesystem::create_symlink(path, folder.path("dangling"));
    expectFailure(folder.path("dangling"), Kind::databaseMissing,
                  "找不到 Orvik 状态数据库：" + folder.path("dangling"));
    expectFailure(folder.path("a\xFF"), Kind::databaseMissing,
                  "找不到 Orvik 状态数据库：" + folder.path("a\uFFFD"));
    expectFailure(folder.path("."), Kind::openFailed, "无法只读打开 Orvik 数据库：disk I/O error");
    expectFailure(folder.write("text", std::string(4096, 'x')), Kind::queryFailed,
                  "无法读取 Orvik 任务：file is not a database");
    expectFailure(folder.write("empty", ""), Kind::queryFailed,
                  "无法读取 Orvik 任务：no such table: threads");
    Writer(path).execute("CREATE TABLE threads (id)");
    expectFailure(path, Kind::queryFailed, "无法读取 Orvik 任务：no such column: title");
}

TEST_F(OrvikThreadStoreTest, waitsForALockButNotForEver) {
    const Writer writer(path);
    writer.execute(schema);
    writer.execute("BEGIN EXCLUSIVE");
    const auto start = std::chrono::steady_clock::now();
    // The library keeps the file open while this process, as the writer, holds a lock on it.
    const auto refused = store.listThreads();
    EXPECT_EQ(refused.error(), OrvikThreadStoreError(Kind::queryFailed, "database is locked"));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2500));
    std::thread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        writer.execute("COMMIT");
    });
    EXPECT_TRUE(store.listThreads().has_value());
    release.join();
}

/// What a file of unknown origin may hold in place of the table.
TEST_F(OrvikThreadStoreTest, aForeignSchemaDoesNoHarm) {
    const std::string others =
        " AS id, 1 AS title, '' AS preview, '' AS cwd, '' AS source, '' AS model, '' AS"
        " reasoning_effort, '' AS git_branch, 1000000000 AS tokens_used, 0 AS created_at, 0 AS"
        " created_at_ms, 0 AS updated_at, 0 AS updated_at_ms, 0 AS recency_at, 0 AS recency_at_ms,"
        " 0 AS archived, '' AS agent_role, '' AS agent_path, '' AS rollout_path";
    const std::pair<std::string, std::string> cases[] = {
        {"VIEW threads AS SELECT 7" + others, "7"},
        {"VIEW threads AS SELECT load_extension('/tmp/x')" + others,
         "unsafe use of load_extension()"},
        {"VIEW threads AS SELECT (SELECT file FROM pragma_database_list)" + others,
         "unsafe use of virtual table \"pragma_database_list\""},
        {"TABLE threads AS SELECT x'61ff'" + others + ", 0 AS more, 0 AS rowid", "a\uFFFD"},
    };
    for (const auto &[content, expected] : cases) {
        std::filesystem::remove(path);
        Writer(path).execute("CREATE " + content);
        const auto threads = store.listThreads();
        EXPECT_EQ(threads ? threads->at(0).id() : threads.error().text(), expected) << content;
    }
    std::filesystem::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    expectFailure(path, Kind::openFailed,
                  "无法只读打开 Orvik 数据库：unable to open database file");
}

} // namespace
} // namespace tallyview
