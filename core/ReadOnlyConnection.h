#pragma once

#include <sqlite3.h>

#include <expected>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>

namespace tallyview {

struct CloseConnection {
    void operator()(sqlite3 *connection) const { sqlite3_close(connection); }
};
using ReadOnlyConnection = std::unique_ptr<sqlite3, CloseConnection>;

/// A connection to a database of unknown origin, or the library's message. It waits up to 3 seconds
/// for a lock. A query ends when a stop is requested; `stop` outlives the connection.
std::expected<ReadOnlyConnection, std::string> openReadOnly(const std::filesystem::path &path,
                                                            const std::stop_token &stop);

} // namespace tallyview
