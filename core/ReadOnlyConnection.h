#pragma once

#include <expected>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>

struct sqlite3;

namespace tallyview {

/// A connection to a database of unknown origin. It waits up to 3 seconds for a lock. A query ends,
/// with an error, when a stop is requested, and where it goes far beyond what listing a million
/// threads takes: after 250 million of the library's instructions, with 2 GiB in the library's
/// memory, at a text of more than 256 MiB.
class ReadOnlyConnection {
public:
    /// The connection or the library's message. `stop` outlives it.
    static std::expected<std::unique_ptr<ReadOnlyConnection>, std::string>
    open(const std::filesystem::path &path, const std::stop_token &stop);

    ReadOnlyConnection(const ReadOnlyConnection &) = delete;
    ReadOnlyConnection &operator=(const ReadOnlyConnection &) = delete;
    ~ReadOnlyConnection();

    sqlite3 *handle() const { return m_handle; }
    bool isStopped() const { return m_stop.stop_requested(); }

private:
    ReadOnlyConnection(sqlite3 *handle, const std::stop_token &stop);
    void defend();
    static int isQueryOver(void *connection);

    sqlite3 *m_handle;
    const std::stop_token &m_stop;
    int m_looksLeft;
};

} // namespace tallyview
