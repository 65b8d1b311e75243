#pragma once

#include <sqlite3.h>

#include <expected>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>

namespace tallyview {

/// What ends a query before its time.
struct QueryEnd {
    const std::stop_token &stop;
    int looksLeft;
};

struct CloseConnection {
    std::unique_ptr<QueryEnd> end;
    void operator()(sqlite3 *connection) const { sqlite3_close(connection); }
};
using ReadOnlyConnection = std::unique_ptr<sqlite3, CloseConnection>;

/// A connection to a database of unknown origin, or the library's message. It waits up to 3 seconds
/// for a lock. A query ends when a stop is requested; `stop` outlives the connection.
///
/// It ends too, with an error, where it goes far beyond what listing a million threads takes: after
/// 250 million of the library's instructions, with 2 GiB in the library's memory, at a text of more
/// than 256 MiB.
std::expected<ReadOnlyConnection, std::string> openReadOnly(const std::filesystem::path &path,
                                                            const std::stop_token &stop);

} // namespace tallyview
