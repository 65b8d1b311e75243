#include "core/OrvikThreadStore.h"

#include "core/RolloutEvent.h"
#include "core/TextSanitizer.h"
#include "core/ThreadRunStateResolver.h"
#include "core/UnicodeText.h"

#include <sqlite3.h>

#include <deque>
#include <memory>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace tallyview {

namespace {

constexpr int busyTimeoutMilliseconds = 3000;

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

struct Close {
    void operator()(sqlite3 *connection) const { sqlite3_close(connection); }
};
struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
// A statement is declared after its connection, so that it goes before it.
using Connection = std::unique_ptr<sqlite3, Close>;
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

using Kind = OrvikThreadStoreError::Kind;

OrvikThreadStoreError failure(Kind kind, sqlite3 *connection) {
    return {kind, connection == nullptr ? "未知错误" : decodedUtf8(sqlite3_errmsg(connection))};
}

/// The row that a statement stands on.
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

/// A thread as the database tells of it, without its run state.
struct Listed {
    ThreadRecord::Fields fields;
    std::string rolloutPath;
};

Listed listed(const Row &row, std::string_view home) {
    const std::string source = row.text(sourceColumn);
    const std::string cwd = row.text(cwdColumn);
    const bool archived = row.flag(archivedColumn);
    const bool isSubagent = !row.text(agentRoleColumn).empty() ||
                            !row.text(agentPathColumn).empty() || isStructured(source);
    ThreadRecord::Fields fields{
        .id = row.text(idColumn),
        .title = displayTitle(row.text(titleColumn)),
        .preview = TextSanitizer::redact(trimmed(row.text(previewColumn))),
        .project = TextSanitizer::projectName(cwd, home),
        .projectPath = cwd,
        .source = sourceLabel(source, isSubagent),
        .model = row.text(modelColumn),
        .reasoningEffort = row.text(reasoningEffortColumn),
        .branch = row.text(gitBranchColumn),
        .tokensUsed = row.integer(tokensUsedColumn),
        .createdAt = instant(creationMilliseconds(row)),
        .updatedAt = instant(updateMilliseconds(row)),
        .archived = archived,
        .isSubagent = isSubagent,
    };
    return {std::move(fields), row.text(rolloutPathColumn)};
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

    /// The known one where it has just these fields.
    ThreadRecord record(ThreadRecord::Fields fields) const {
        const auto found = m_records.find(fields.id);
        const bool isKnown = found != m_records.end() && **found->second == fields;
        return isKnown ? *found->second : ThreadRecord(std::move(fields));
    }

private:
    std::unordered_map<std::string_view, const ThreadRecord *> m_records;
};

std::expected<Connection, OrvikThreadStoreError> openReadOnly(const std::filesystem::path &path) {
    constexpr int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_FULLMUTEX;
    sqlite3 *handle = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
    Connection connection(handle);
    if (code != SQLITE_OK || !connection) {
        return std::unexpected(failure(Kind::openFailed, handle));
    }
    sqlite3_busy_timeout(handle, busyTimeoutMilliseconds);
    // Sorts in memory: the agent's texts stay out of temporary files.
    sqlite3_exec(handle, "PRAGMA temp_store = MEMORY", nullptr, nullptr, nullptr);
    return connection;
}

std::expected<std::deque<Listed>, OrvikThreadStoreError> readRows(sqlite3 *connection,
                                                                  std::string_view home) {
    sqlite3_stmt *prepared = nullptr;
    const int code = sqlite3_prepare_v2(connection, query, -1, &prepared, nullptr);
    const Statement statement(prepared);
    if (code != SQLITE_OK || !statement) {
        return std::unexpected(failure(Kind::queryFailed, connection));
    }
    std::deque<Listed> rows;
    while (sqlite3_step(prepared) == SQLITE_ROW) {
        rows.push_back(listed(Row(prepared), home));
    }
    const int outcome = sqlite3_errcode(connection);
    if (outcome != SQLITE_OK && outcome != SQLITE_DONE) {
        return std::unexpected(failure(Kind::queryFailed, connection));
    }
    return rows;
}

/// Each row goes as its record comes, so that a million of them are not held twice.
std::vector<ThreadRecord> records(std::deque<Listed> rows, const KnownRecords &known) {
    const ThreadRunStateResolver resolver;
    RolloutEventParser parser;
    std::vector<ThreadRecord> threads;
    threads.reserve(rows.size());
    for (; !rows.empty(); rows.pop_front()) {
        Listed &row = rows.front();
        row.fields.runState = resolver.resolve(row.rolloutPath, row.fields.archived, parser);
        threads.push_back(known.record(std::move(row.fields)));
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
OrvikThreadStore::listThreads(std::span<const ThreadRecord> known) const {
    std::error_code ignored;
    if (!std::filesystem::exists(m_databaseURL, ignored)) {
        return std::unexpected(
            OrvikThreadStoreError(Kind::databaseMissing, decodedUtf8(m_databaseURL.native())));
    }
    auto connection = openReadOnly(m_databaseURL);
    if (!connection) {
        return std::unexpected(connection.error());
    }
    auto rows = readRows(connection->get(), m_home);
    // The agent may wait for its database: it is let go before the rollout files are read.
    connection->reset();
    if (!rows) {
        return std::unexpected(rows.error());
    }
    return records(*std::move(rows), KnownRecords(known));
}

} // namespace tallyview
