#pragma once

#include "core/ReadOnlyConnection.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <memory>
#include <memory_resource>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace tallyview {

/// A row of the agent's table of threads as it is stored, except that its texts are valid UTF-8 and
/// of several columns for one time the one that counts has been taken. An absent text is empty.
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

/// Some rows with the memory that their texts lie in: one piece for all of them, in place of one
/// for each text.
struct ThreadBatch {
    /// Few enough rows to be done with soon, enough to be worth handing to a thread.
    static constexpr std::size_t mostRows = 256;

    ThreadBatch() { rows.reserve(mostRows); }

    std::pmr::monotonic_buffer_resource memory;
    std::vector<StoredThread> rows;
};
using ThreadBatches = std::vector<std::unique_ptr<ThreadBatch>>;

/// All rows, newest first, or the library's message. docs/formats.md says which columns it relies
/// on.
std::expected<ThreadBatches, std::string> readStoredThreads(const ReadOnlyConnection &database);

} // namespace tallyview
