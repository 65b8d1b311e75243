#pragma once

#include "core/ThreadVocabulary.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace tallyview {

/// Reads single lines of a rollout file. Reuses its memory from line to line; use it from one
/// thread.
class RolloutEventParser {
public:
    /// How many bytes after a line must be readable, whatever they hold.
    static constexpr std::size_t padding = 64;

    RolloutEventParser();
    ~RolloutEventParser();
    RolloutEventParser(const RolloutEventParser &) = delete;
    RolloutEventParser &operator=(const RolloutEventParser &) = delete;

    /// The run state that the event on `line` puts its thread into; nothing for an event that does
    /// not decide it, and for a line that is not a single JSON value.
    std::optional<ThreadRunState> decidedState(std::string_view line);

private:
    class Parser;
    /// Made when the first line needs it.
    std::unique_ptr<Parser> m_parser;
};

} // namespace tallyview
