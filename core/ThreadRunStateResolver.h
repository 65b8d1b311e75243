#pragma once

#include "core/RolloutEvent.h"
#include "core/ThreadVocabulary.h"

#include <cstddef>
#include <string>

namespace tallyview {

/// What is reused from file to file. Use it from one thread.
struct RolloutMemory {
    RolloutEventParser parser{};
    std::string bytes{}; ///< what has last been read
};

/// Tells from the end of a thread's rollout file whether its task is still running.
///
/// An immutable value without shared state; use it from any thread. docs/formats.md says what it
/// relies on in the file.
class ThreadRunStateResolver {
public:
    static constexpr std::size_t defaultChunkSize = 524'288;

    /// `chunkSize` is the number of bytes of one backward read.
    explicit ThreadRunStateResolver(std::size_t chunkSize = defaultChunkSize)
        : m_chunkSize(chunkSize) {}

    std::size_t chunkSize() const { return m_chunkSize; }

    /// The state that the file's latest deciding event gives. When there is no telling (no file, no
    /// deciding event, text that is not UTF-8) it is `completed`; so it is for an archived thread,
    /// whose file is not touched. Blocks while it reads.
    ThreadRunState resolve(const std::string &rolloutPath, bool archived) const;

    /// The same, for many files in a row.
    ThreadRunState resolve(const std::string &rolloutPath, bool archived,
                           RolloutMemory &memory) const;

private:
    std::size_t m_chunkSize;
};

} // namespace tallyview
