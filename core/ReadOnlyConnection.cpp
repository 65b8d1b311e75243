#include "core/ReadOnlyConnection.h"

#include "core/UnicodeText.h"

namespace tallyview {

namespace {

constexpr int busyTimeoutMilliseconds = 3000;
constexpr int instructionsBetweenLooks = 10'000; ///< well under a millisecond
constexpr int mostLooks = 25'000;                ///< some seconds; a million threads take a fifth
constexpr int longestText = 256 << 20;
constexpr sqlite3_int64 mostMemory = 2LL << 30; ///< enough to sort such a text: it is copied thrice

int isOver(void *context) {
    auto &end = *static_cast<QueryEnd *>(context);
    return end.stop.stop_requested() || --end.looksLeft < 0 ? 1 : 0;
}

/// The schema is not ours: whatever its views and indexes call must have no side effects, and an
/// endless query must end, on request at once.
void defend(sqlite3 *connection, QueryEnd &end) {
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_limit(connection, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_exec(connection, "PRAGMA query_only = ON", nullptr, nullptr, nullptr);
    sqlite3_limit(connection, SQLITE_LIMIT_LENGTH, longestText);
    sqlite3_hard_heap_limit64(mostMemory);
    sqlite3_progress_handler(connection, instructionsBetweenLooks, isOver, &end);
}

} // namespace

std::expected<ReadOnlyConnection, std::string> openReadOnly(const std::filesystem::path &path,
                                                            const std::stop_token &stop) {
    constexpr int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_FULLMUTEX;
    sqlite3 *handle = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
    ReadOnlyConnection connection(handle, {std::make_unique<QueryEnd>(stop, mostLooks)});
    if (!connection) {
        return std::unexpected("未知错误");
    }
    if (code != SQLITE_OK) {
        return std::unexpected(decodedUtf8(sqlite3_errmsg(handle)));
    }
    sqlite3_busy_timeout(handle, busyTimeoutMilliseconds);
    // Sorts in memory: the agent's texts stay out of temporary files.
    sqlite3_exec(handle, "PRAGMA temp_store = MEMORY", nullptr, nullptr, nullptr);
    defend(handle, *connection.get_deleter().end);
    return connection;
}

} // namespace tallyview
