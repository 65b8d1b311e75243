#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tallyview::demo {

/// One row of the agent's table `threads`, a member per column; an absent value is NULL.
/// Texts are stored byte for byte. Times are in whatever unit the row wants to show.
struct SampleRow {
    std::optional<std::string> id = {};
    std::optional<std::string> title = {};
    std::optional<std::string> preview = {};
    std::optional<std::string> cwd = {};
    std::optional<std::string> source = {};
    std::optional<std::string> model = {};
    std::optional<std::string> reasoningEffort = {};
    std::optional<std::string> gitBranch = {};
    std::optional<std::int64_t> tokensUsed = {};
    std::optional<std::int64_t> createdAt = {};
    std::optional<std::int64_t> createdAtMs = {};
    std::optional<std::int64_t> updatedAt = {};
    std::optional<std::int64_t> updatedAtMs = {};
    std::optional<std::int64_t> recencyAt = {};
    std::optional<std::int64_t> recencyAtMs = {};
    std::optional<std::int64_t> archived = {};
    std::optional<std::string> agentRole = {};
    std::optional<std::string> agentPath = {};
    std::optional<std::string> rolloutPath = {};

    // Columns that the dashboard does not read.
    std::optional<std::string> firstUserMessage = {};
    std::optional<std::string> sandboxPolicy = {};
    std::optional<std::string> approvalMode = {};
    std::optional<std::string> cliVersion = {};
    std::optional<std::string> gitCommit = {};
    std::optional<std::int64_t> turnCount = {};

    friend bool operator==(const SampleRow &, const SampleRow &) = default;
};

} // namespace tallyview::demo
