#include "core/TaskCompletionTracker.h"

#include "core/Precondition.h"

#include <utility>

namespace tallyview {

std::vector<ThreadRecord>
TaskCompletionTracker::completedThreads(const std::vector<ThreadRecord> &threads) {
    std::vector<ThreadRecord> completed;
    decltype(m_previousStates) states;
    states.reserve(threads.size());
    for (const ThreadRecord &thread : threads) {
        const auto previous = m_previousStates.find(thread.id());
        if (previous != m_previousStates.end() && previous->second == ThreadRunState::running &&
            thread->runState == ThreadRunState::completed) {
            completed.push_back(thread);
        }
        if (!states.emplace(thread.id(), thread->runState).second) {
            preconditionFailure("Duplicate values for key: '" + thread.id() + "'");
        }
    }
    m_previousStates = std::move(states);
    return completed;
}

} // namespace tallyview
