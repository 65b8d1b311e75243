#include "core/StoredThreads.h"

#include "core/TextSanitizer.h"
#include "core/UnicodeText.h"

#include <sqlite3.h>

#include <algorithm>

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
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

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

std::int64_t creationMilliseconds(const Row &row) {
    return TextSanitizer::normalizedMilliseconds(
        {row.integer(createdAtMsColumn), row.integer(createdAtColumn)});
}

std::int64_t updateMilliseconds(const Row &row) {
    return TextSanitizer::normalizedMilliseconds(
        {row.integer(recencyAtMsColumn), row.integer(updatedAtMsColumn),
         row.integer(recencyAtColumn), row.integer(updatedAtColumn)});
}

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

} // namespace

std::expected<ThreadBatches, std::string> readStoredThreads(const ReadOnlyConnection &database) {
    const auto failure = [&] {
        return std::unexpected(decodedUtf8(sqlite3_errmsg(database.handle())));
    };
    sqlite3_stmt *prepared = nullptr;
    const int code = sqlite3_prepare_v2(database.handle(), query, -1, &prepared, nullptr);
    const Statement statement(prepared);
    if (code != SQLITE_OK || !statement) {
        return failure();
    }
    ThreadBatches batches;
    while (!database.isStopped() && sqlite3_step(prepared) == SQLITE_ROW) {
        if (batches.empty() || batches.back()->rows.size() == ThreadBatch::mostRows) {
            batches.push_back(std::make_unique<ThreadBatch>());
        }
        ThreadBatch &batch = *batches.back();
        batch.rows.push_back(storedThread(Row(prepared, batch.memory)));
    }
    if (database.isStopped()) {
        return std::unexpected(sqlite3_errstr(SQLITE_INTERRUPT));
    }
    const int outcome = sqlite3_errcode(database.handle());
    if (outcome != SQLITE_OK && outcome != SQLITE_DONE) {
        return failure();
    }
    return batches;
}

} // namespace tallyview
