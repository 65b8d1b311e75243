#pragma once

#include "core/ThreadVocabulary.h"

#include <cstddef>
#include <string>

namespace tallyview {

class RolloutEventParser;

/// Reads from the end of a thread's rollout file whether its task still runs.
///
/// An immutable value without shared state; use it from any thread. docs/formats.md tells what
/// of the file it relies on.
class ThreadRunStateResolver {
public:
    static constexpr std::size_t defaultChunkSize = 524'288;

    /// `chunkSize` is the number of bytes of one backward read.
    explicit ThreadRunStateResolver(std::size_t chunkSize = defaultChunkSize)
        : m_chunkSize(chunkSize) {}

    std::size_t chunkSize() const { return m_chunkSize; }

    /// The state that the latest deciding event of the file gives. Whenever that cannot be told
    /// (no file, no deciding event, text that is not UTF-8) the answer is `completed`, and so it
    /// is, without touching the file, for an archived thread. Blocks while it reads.
    ThreadRunState resolve(const std::string &rolloutPath, bool archived) const;

    /// The same, for many files in a row: `parser` spares each the parser's memory.
    ThreadRunState resolve(const std::string &rolloutPath, bool archived,
                           RolloutEventParser &parser) const;

private:
    std::size_t m_chunkSize;
};

} // namespace tallyview
