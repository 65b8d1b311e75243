#pragma once

#include "core/ThreadRecord.h"
#include "core/UnicodeText.h"

#include <unordered_set>
#include <vector>

namespace tallyview {

/// Tells which tasks have finished between two lists of threads.
///
/// A plain value without locking; use it from one thread.
class TaskCompletionTracker {
public:
    /// The records, in the order of `threads`, that were running in the previous list and are
    /// completed in this one; remembers which are running now. The first list is the baseline and
    /// reports nothing. A thread that was missing from the previous list is not reported.
    ///
    /// The ids of one list must be distinct: a repeated id stops the process.
    std::vector<ThreadRecord> completedThreads(const std::vector<ThreadRecord> &threads);

private:
    struct IdentityHash {
        std::size_t operator()(const ThreadRecord &record) const { return record.identityHash(); }
    };
    struct SameIdentity {
        bool operator()(const ThreadRecord &left, const ThreadRecord &right) const {
            return canonicallyEqual(left.id(), right.id());
        }
    };
    std::unordered_set<ThreadRecord, IdentityHash, SameIdentity>
        m_running; ///< in the previous list
};

} // namespace tallyview
