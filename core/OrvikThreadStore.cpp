#include "core/OrvikThreadStore.h"

#include "core/ReadOnlyConnection.h"
#include "core/RolloutEvent.h"
#include "core/TextSanitizer.h"
#include "core/ThreadRunStateResolver.h"
#include "core/UnicodeText.h"

#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <utility>

namespace tallyview {

namespace {

constexpr const char *query =
    "SELECT\n"
    "    id, title, preview, cwd, source, model, reasoning_effort, git_branch,\n"
    "    tokens_used, created_at, created_at_ms, updated_at, updated_at_ms,\n"
    "    recency_at, recency_at_ms, archived, agent_role, agent_path, rollout_path\n"
    "FROM threads\n"
    "ORDER BY\n"
    "    CASE\n"
    "        WHEN recency_at_ms > 0 THEN recency_at_ms\n"
    "        WHEN updated_at_ms > 0 THEN updated_at_ms\n"
    "        ELSE updated_at * 1000\n"
    "    END DESC";

/// The query's columns, by position.
enum Column : int {
    idColumn,
    titleColumn,
    previewColumn,
    cwdColumn,
    sourceColumn,
    modelColumn,
    reasoningEffortColumn,
    gitBranchColumn,
    tokensUsedColumn,
    createdAtColumn,
    createdAtMsColumn,
    updatedAtColumn,
    updatedAtMsColumn,
    recencyAtColumn,
    recencyAtMsColumn,
    archivedColumn,
    agentRoleColumn,
    agentPathColumn,
    rolloutPathColumn
};

struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
// Declare a statement after its connection, so that it is finalized first.
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

using Kind = OrvikThreadStoreError::Kind;

OrvikThreadStoreError failure(sqlite3 *connection) {
    return {Kind::queryFailed, decodedUtf8(sqlite3_errmsg(connection))};
}

OrvikThreadStoreError failure(int code) { return {Kind::queryFailed, sqlite3_errstr(code)}; }

/// The current row of a statement.
class Row {
public:
    explicit Row(sqlite3_stmt *statement) : m_statement(statement) {}

    std::string text(Column column) const {
        const auto *const bytes = sqlite3_column_text(m_statement, column);
        return bytes == nullptr ? "" : decodedUtf8(reinterpret_cast<const char *>(bytes));
    }
    std::int64_t integer(Column column) const { return sqlite3_column_int64(m_statement, column); }
    bool flag(Column column) const { return sqlite3_column_int(m_statement, column) != 0; }

private:
    sqlite3_stmt *m_statement;
};

bool isStructured(std::string_view source) {
    return prefixCharacters(trimmedBlanks(source), 1) == "{";
}

std::string sourceLabel(std::string_view source, bool isSubagent) {
    constexpr std::size_t longestLabel = 24;
    if (isSubagent) {
        return "subagent";
    }
    const std::string label = lowercased(trimmed(source));
    const bool fits = !label.empty() && characterCount(label) <= longestLabel;
    return fits ? label : "local";
}

std::string displayTitle(std::string_view stored) {
    const std::string_view title = trimmed(stored);
    return TextSanitizer::redact(title.empty() ? "未命名任务" : title);
}

std::optional<Instant> instant(std::int64_t milliseconds) {
    if (milliseconds < 1) {
        return std::nullopt;
    }
    return Instant(Instant::duration(static_cast<double>(milliseconds) / 1000.0));
}

std::int64_t creationMilliseconds(const Row &row) {
    return TextSanitizer::normalizedMilliseconds(
        {row.integer(createdAtMsColumn), row.integer(createdAtColumn)});
}

std::int64_t updateMilliseconds(const Row &row) {
    return TextSanitizer::normalizedMilliseconds(
        {row.integer(recencyAtMsColumn), row.integer(updatedAtMsColumn),
         row.integer(recencyAtColumn), row.integer(updatedAtColumn)});
}

/// A row as the database holds it.
struct StoredThread {
    std::string id;
    std::string title;
    std::string preview;
    std::string cwd;
    std::string source;
    std::string model;
    std::string reasoningEffort;
    std::string branch;
    std::int64_t tokensUsed;
    std::int64_t createdMilliseconds;
    std::int64_t updatedMilliseconds;
    bool archived;
    bool hasAgentRole;
    bool hasAgentPath;
    std::string rolloutPath;
};

StoredThread storedThread(const Row &row) {
    return {
        .id = row.text(idColumn),
        .title = row.text(titleColumn),
        .preview = row.text(previewColumn),
        .cwd = row.text(cwdColumn),
        .source = row.text(sourceColumn),
        .model = row.text(modelColumn),
        .reasoningEffort = row.text(reasoningEffortColumn),
        .branch = row.text(gitBranchColumn),
        .tokensUsed = row.integer(tokensUsedColumn),
        .createdMilliseconds = creationMilliseconds(row),
        .updatedMilliseconds = updateMilliseconds(row),
        .archived = row.flag(archivedColumn),
        .hasAgentRole = !row.text(agentRoleColumn).empty(),
        .hasAgentPath = !row.text(agentPathColumn).empty(),
        .rolloutPath = row.text(rolloutPathColumn),
    };
}

/// Records by their ids.
class KnownRecords {
public:
    explicit KnownRecords(std::span<const ThreadRecord> records) {
        m_records.reserve(records.size());
        for (const ThreadRecord &record : records) {
            m_records.emplace(record.id(), &record);
        }
    }

    /// The known record if it has exactly these fields, else a new one.
    ThreadRecord record(ThreadRecord::Fields fields) const {
        const auto found = m_records.find(fields.id);
        const bool isKnown = found != m_records.end() && **found->second == fields;
        return isKnown ? *found->second : ThreadRecord(std::move(fields));
    }

private:
    std::unordered_map<std::string_view, const ThreadRecord *> m_records;
};

/// Few enough rows to be done with soon, enough to be worth handing to a thread.
constexpr std::size_t batchSize = 256;
using Batch = std::vector<StoredThread>;

std::expected<std::vector<Batch>, OrvikThreadStoreError> readRows(sqlite3 *connection,
                                                                  const std::stop_token &stop) {
    sqlite3_stmt *prepared = nullptr;
    const int code = sqlite3_prepare_v2(connection, query, -1, &prepared, nullptr);
    const Statement statement(prepared);
    if (code != SQLITE_OK || !statement) {
        return std::unexpected(failure(connection));
    }
    std::vector<Batch> batches;
    while (!stop.stop_requested() && sqlite3_step(prepared) == SQLITE_ROW) {
        if (batches.empty() || batches.back().size() == batchSize) {
            batches.emplace_back().reserve(batchSize);
        }
        batches.back().push_back(storedThread(Row(prepared)));
    }
    if (stop.stop_requested()) {
        return std::unexpected(failure(SQLITE_INTERRUPT));
    }
    const int outcome = sqlite3_errcode(connection);
    if (outcome != SQLITE_OK && outcome != SQLITE_DONE) {
        return std::unexpected(failure(connection));
    }
    return batches;
}

/// Turns rows into records. Not to be shared between threads.
class RecordMaker {
public:
    RecordMaker(const std::string &home, const KnownRecords &known, const std::stop_token &stop)
        : m_home(home)
        , m_known(known)
        , m_stop(stop) {}

    /// Fewer than the rows if a stop is requested.
    std::vector<ThreadRecord> records(Batch batch) {
        std::vector<ThreadRecord> result;
        result.reserve(batch.size());
        for (StoredThread &stored : batch) {
            if (m_stop.stop_requested()) {
                break;
            }
            result.push_back(m_known.record(fields(std::move(stored))));
        }
        return result;
    }

private:
    ThreadRecord::Fields fields(StoredThread stored) {
        const bool isSubagent =
            stored.hasAgentRole || stored.hasAgentPath || isStructured(stored.source);
        return {
            .id = std::move(stored.id),
            .title = displayTitle(stored.title),
            .preview = TextSanitizer::redact(trimmed(stored.preview)),
            .project = TextSanitizer::projectName(stored.cwd, m_home),
            .projectPath = std::move(stored.cwd),
            .source = sourceLabel(stored.source, isSubagent),
            .model = std::move(stored.model),
            .reasoningEffort = std::move(stored.reasoningEffort),
            .branch = std::move(stored.branch),
            .tokensUsed = stored.tokensUsed,
            .createdAt = instant(stored.createdMilliseconds),
            .updatedAt = instant(stored.updatedMilliseconds),
            .archived = stored.archived,
            .isSubagent = isSubagent,
            .runState = m_resolver.resolve(stored.rolloutPath, stored.archived, m_parser),
        };
    }

    const std::string &m_home;
    const KnownRecords &m_known;
    const std::stop_token &m_stop;
    ThreadRunStateResolver m_resolver;
    RolloutEventParser m_parser;
};

/// Calls `work` on this thread and on as many others as there is something to do for. Rethrows what
/// any of them throws.
void runOnThreads(std::size_t tasks, const std::function<void()> &work) {
    constexpr std::size_t mostThreads = 4;
    const std::size_t threads =
        std::min({tasks, mostThreads, std::size_t{std::thread::hardware_concurrency()}});
    std::vector<std::future<void>> others;
    try {
        while (others.size() + 1 < threads) {
            others.push_back(std::async(std::launch::async, work));
        }
    } catch (const std::system_error &) {
        // The system has no more threads to give; those that did start do all the work.
    }
    work();
    for (std::future<void> &other : others) {
        other.get();
    }
}

/// Opening and reading rollout files takes most of the time, so several threads share them. Each
/// batch is freed once its records are made: a million rows are not held twice.
std::vector<ThreadRecord> records(std::vector<Batch> batches, const std::string &home,
                                  const KnownRecords &known, const std::stop_token &stop) {
    std::vector<std::vector<ThreadRecord>> made(batches.size());
    std::atomic<std::size_t> next = 0;
    runOnThreads(batches.size(), [&] {
        RecordMaker maker(home, known, stop);
        for (std::size_t i = next++; i < batches.size() && !stop.stop_requested(); i = next++) {
            made[i] = maker.records(std::exchange(batches[i], {}));
        }
    });
    std::vector<ThreadRecord> threads;
    threads.reserve(made.size() * batchSize);
    for (std::vector<ThreadRecord> &some : made) {
        std::ranges::move(some, std::back_inserter(threads));
    }
    return threads;
}

} // namespace

std::string OrvikThreadStoreError::description() const {
    switch (m_kind) {
    case Kind::databaseMissing:
        return "找不到 Orvik 状态数据库：" + m_text;
    case Kind::openFailed:
        return "无法只读打开 Orvik 数据库：" + m_text;
    case Kind::queryFailed:
        return "无法读取 Orvik 任务：" + m_text;
    }
    std::unreachable();
}

std::expected<std::vector<ThreadRecord>, OrvikThreadStoreError>
OrvikThreadStore::listThreads(std::span<const ThreadRecord> known,
                              const std::stop_token &stop) const {
    std::error_code ignored;
    const auto status = std::filesystem::status(m_databaseURL, ignored);
    if (!std::filesystem::exists(status)) {
        return std::unexpected(
            OrvikThreadStoreError(Kind::databaseMissing, decodedUtf8(m_databaseURL.native())));
    }
    using enum std::filesystem::file_type;
    if (status.type() != regular && status.type() != directory) { // opening it might block
        return std::unexpected(
            OrvikThreadStoreError(Kind::openFailed, sqlite3_errstr(SQLITE_CANTOPEN)));
    }
    auto connection = openReadOnly(m_databaseURL, stop);
    if (!connection) {
        return std::unexpected(OrvikThreadStoreError(Kind::openFailed, connection.error()));
    }
    try {
        auto rows = readRows(connection->get(), stop);
        // The agent may be waiting for its database: let go of it before reading the rollout files.
        connection->reset();
        if (!rows) {
            return std::unexpected(rows.error());
        }
        auto threads = records(*std::move(rows), m_home, KnownRecords(known), stop);
        if (stop.stop_requested()) {
            return std::unexpected(failure(SQLITE_INTERRUPT));
        }
        return threads;
    } catch (const std::bad_alloc &) {
        return std::unexpected(failure(SQLITE_NOMEM));
    }
}

} // namespace tallyview
