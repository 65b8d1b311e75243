#pragma once

#include "core/HomeDirectory.h"
#include "core/ThreadRecord.h"
#include "core/UnicodeText.h"

#include <expected>
#include <filesystem>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace tallyview {

/// Why the agent's state database could not be read.
class OrvikThreadStoreError {
public:
    enum class Kind { databaseMissing, openFailed, queryFailed };

    OrvikThreadStoreError(Kind kind, std::string text) : m_kind(kind), m_text(std::move(text)) {}

    Kind kind() const { return m_kind; }
    /// The database's path (`databaseMissing`) or the database library's message.
    const std::string &text() const { return m_text; }
    /// What the user is told.
    std::string description() const;

    friend bool operator==(const OrvikThreadStoreError &, const OrvikThreadStoreError &) = default;

private:
    Kind m_kind;
    std::string m_text;
};

/// Read-only access to the agent's state database.
///
/// An immutable value; use it from any thread. Each call has a connection of its own, which is
/// closed before the call returns. docs/formats.md says what it relies on in the database.
class OrvikThreadStore {
public:
    /// `home` is taken as the user's home directory, in UTF-8. Looking it up while the environment
    /// changes is not safe, so that happens once, here.
    explicit OrvikThreadStore(std::filesystem::path databaseURL,
                              std::string home = decodedUtf8(homeDirectory()))
        : m_databaseURL(std::move(databaseURL))
        , m_home(std::move(home)) {}

    const std::filesystem::path &databaseURL() const { return m_databaseURL; }

    /// Every thread in the database, newest first, or the reason why there is no list; never part
    /// of one. Blocks while the database is locked, at most 3 seconds a try, and while it reads the
    /// end of each live thread's rollout file. Makes a long list on up to four threads of the
    /// process, all of which have ended when it returns.
    ///
    /// A record with the same fields as one of `known` shares that one's data, so that reading a
    /// list again costs only the memory of what has changed. A requested stop ends the reading
    /// before the next row, with an error.
    std::expected<std::vector<ThreadRecord>, OrvikThreadStoreError>
    listThreads(std::span<const ThreadRecord> known = {}, const std::stop_token &stop = {}) const;

private:
    std::filesystem::path m_databaseURL;
    std::string m_home;
};

} // namespace tallyview
