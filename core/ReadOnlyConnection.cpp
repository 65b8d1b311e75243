#include "core/ReadOnlyConnection.h"

#include "core/UnicodeText.h"

#include <sqlite3.h>

namespace tallyview {

namespace {

constexpr int busyTimeoutMilliseconds = 3000;
constexpr int instructionsBetweenLooks = 10'000; ///< well under a millisecond
constexpr int mostLooks = 25'000;                ///< some seconds; a million threads take a fifth
constexpr int longestText = 256 << 20;
constexpr sqlite3_int64 mostMemory = 2LL << 30; ///< enough to sort such a text: it is copied thrice

} // namespace

std::expected<std::unique_ptr<ReadOnlyConnection>, std::string>
ReadOnlyConnection::open(const std::filesystem::path &path, const std::stop_token &stop) {
    constexpr int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_FULLMUTEX;
    sqlite3 *handle = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
    if (handle == nullptr) {
        return std::unexpected("未知错误");
    }
    std::unique_ptr<ReadOnlyConnection> connection(new ReadOnlyConnection(handle, stop));
    if (code != SQLITE_OK) {
        return std::unexpected(decodedUtf8(sqlite3_errmsg(handle)));
    }
    connection->defend();
    return connection;
}

ReadOnlyConnection::ReadOnlyConnection(sqlite3 *handle, const std::stop_token &stop)
    : m_handle(handle)
    , m_stop(stop)
    , m_looksLeft(mostLooks) {}

ReadOnlyConnection::~ReadOnlyConnection() { sqlite3_close(m_handle); }

/// The schema is not ours: whatever its views and indexes call must have no side effects, and an
/// endless query must end, on request at once.
void ReadOnlyConnection::defend() {
    sqlite3_busy_timeout(m_handle, busyTimeoutMilliseconds);
    // Sorts in memory: the agent's texts stay out of temporary files.
    sqlite3_exec(m_handle, "PRAGMA temp_store = MEMORY", nullptr, nullptr, nullptr);
    sqlite3_exec(m_handle, "PRAGMA query_only = ON", nullptr, nullptr, nullptr);
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_limit(m_handle, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(m_handle, SQLITE_LIMIT_LENGTH, longestText);
    sqlite3_hard_heap_limit64(mostMemory);
    sqlite3_progress_handler(m_handle, instructionsBetweenLooks, isQueryOver, this);
}

int ReadOnlyConnection::isQueryOver(void *connection) {
    auto &self = *static_cast<ReadOnlyConnection *>(connection);
    return self.isStopped() || --self.m_looksLeft < 0 ? 1 : 0;
}

} // namespace tallyview
