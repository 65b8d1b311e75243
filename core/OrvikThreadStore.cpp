#include "core/OrvikThreadStore.h"

#include "core/ReadOnlyConnection.h"
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
#include <memory_resource>
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

/// The current row of a statement, whose texts are copied into a memory that outlives it.
class Row {
public:
    Row(sqlite3_stmt *statement, std::pmr::memory_resource &memory)
        : m_statement(statement)
        , m_memory(memory) {}

    std::string_view text(Column column) const {
        const auto *const bytes =
            reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
        const std::string_view stored = bytes == nullptr ? std::string_view() : bytes;
        return isValidUtf8(stored) ? copy(stored) : copy(decodedUtf8(stored));
    }
    std::int64_t integer(Column column) const { return sqlite3_column_int64(m_statement, column); }
    bool flag(Column column) const { return sqlite3_column_int(m_statement, column) != 0; }

private:
    std::string_view copy(std::string_view text) const {
        auto *const bytes = static_cast<char *>(m_memory.allocate(text.size(), alignof(char)));
        std::ranges::copy(text, bytes);
        return {bytes, text.size()};
    }

    sqlite3_stmt *m_statement;
    std::pmr::memory_resource &m_memory;
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
    std::string_view id;
    std::string_view title;
    std::string_view preview;
    std::string_view cwd;
    std::string_view source;
    std::string_view model;
    std::string_view reasoningEffort;
    std::string_view branch;
    std::int64_t tokensUsed;
    std::int64_t createdMilliseconds;
    std::int64_t updatedMilliseconds;
    bool archived;
    bool hasAgentRole;
    bool hasAgentPath;
    std::string_view rolloutPath;
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
    explicit KnownRecords(std::span<const ThreadRecord> records) : m_records(&m_memory) {
        m_records.reserve(records.size());
        for (const ThreadRecord &record : records) {
            m_records.emplace(record.id(), &record);
        }
    }

    /// The known record if it has exactly these fields, else a new one.
    ThreadRecord record(const ThreadRecord::Fields &fields) const {
        const auto found = m_records.find(fields.id);
        const bool isKnown = found != m_records.end() && **found->second == fields;
        return isKnown ? *found->second : ThreadRecord(fields);
    }

private:
    std::pmr::monotonic_buffer_resource m_memory;
    std::pmr::unordered_map<std::string_view, const ThreadRecord *> m_records;
};

/// Few enough rows to be done with soon, enough to be worth handing to a thread.
constexpr std::size_t batchSize = 256;

/// Some rows with the memory that their texts lie in: one piece for all of them, in place of one
/// for each text.
struct Batch {
    Batch() { rows.reserve(batchSize); }

    std::pmr::monotonic_buffer_resource memory;
    std::vector<StoredThread> rows;
};
using Batches = std::vector<std::unique_ptr<Batch>>;

std::expected<Batches, OrvikThreadStoreError> readRows(sqlite3 *connection,
                                                       const std::stop_token &stop) {
    sqlite3_stmt *prepared = nullptr;
    const int code = sqlite3_prepare_v2(connection, query, -1, &prepared, nullptr);
    const Statement statement(prepared);
    if (code != SQLITE_OK || !statement) {
        return std::unexpected(failure(connection));
    }
    Batches batches;
    while (!stop.stop_requested() && sqlite3_step(prepared) == SQLITE_ROW) {
        if (batches.empty() || batches.back()->rows.size() == batchSize) {
            batches.push_back(std::make_unique<Batch>());
        }
        Batch &batch = *batches.back();
        batch.rows.push_back(storedThread(Row(prepared, batch.memory)));
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
    std::vector<ThreadRecord> records(std::span<const StoredThread> rows) {
        std::vector<ThreadRecord> result;
        result.reserve(rows.size());
        for (const StoredThread &stored : rows) {
            if (m_stop.stop_requested()) {
                break;
            }
            fill(stored);
            result.push_back(m_known.record(m_fields));
        }
        return result;
    }

private:
    void fill(const StoredThread &stored) {
        const std::string_view title = trimmed(stored.title);
        m_fields.id = stored.id;
        m_fields.title = title.empty() ? "未命名任务" : title;
        TextSanitizer::redactInPlace(m_fields.title);
        m_fields.preview = trimmed(stored.preview);
        TextSanitizer::redactInPlace(m_fields.preview);
        m_fields.project = TextSanitizer::projectName(stored.cwd, m_home);
        m_fields.projectPath = stored.cwd;
        m_fields.isSubagent =
            stored.hasAgentRole || stored.hasAgentPath || isStructured(stored.source);
        m_fields.source = sourceLabel(stored.source, m_fields.isSubagent);
        m_fields.model = stored.model;
        m_fields.reasoningEffort = stored.reasoningEffort;
        m_fields.branch = stored.branch;
        m_fields.tokensUsed = stored.tokensUsed;
        m_fields.createdAt = instant(stored.createdMilliseconds);
        m_fields.updatedAt = instant(stored.updatedMilliseconds);
        m_fields.archived = stored.archived;
        m_rolloutPath = stored.rolloutPath;
        m_fields.runState = m_resolver.resolve(m_rolloutPath, stored.archived, m_rolloutMemory);
    }

    const std::string &m_home;
    const KnownRecords &m_known;
    const std::stop_token &m_stop;
    ThreadRunStateResolver m_resolver;
    RolloutMemory m_rolloutMemory;
    // Filled anew for each row, in the memory of those before.
    ThreadRecord::Fields m_fields;
    std::string m_rolloutPath;
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
std::vector<ThreadRecord> records(Batches batches, const std::string &home,
                                  const KnownRecords &known, const std::stop_token &stop) {
    std::vector<std::vector<ThreadRecord>> made(batches.size());
    std::atomic<std::size_t> next = 0;
    runOnThreads(batches.size(), [&] {
        RecordMaker maker(home, known, stop);
        for (std::size_t i = next++; i < batches.size() && !stop.stop_requested(); i = next++) {
            made[i] = maker.records(batches[i]->rows);
            batches[i].reset();
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
