#include "core/TaskCompletionTracker.h"

#include "core/Precondition.h"

#include <bit>
#include <cstdint>
#include <string>
#include <utility>

namespace tallyview {

namespace {

/// Stops the process if an id occurs twice. Uses a flat hash table, because every refresh checks
/// all threads here while the window waits.
void requireDistinctIDs(const std::vector<ThreadRecord> &threads) {
    struct Slot {
        std::size_t hash = 0;
        const ThreadRecord *thread = nullptr;
    };
    std::vector<Slot> slots(std::bit_ceil(2 * threads.size() + 1));
    const std::size_t mask = slots.size() - 1;
    for (const ThreadRecord &thread : threads) {
        const std::size_t hash = thread.identityHash();
        std::size_t place = hash & mask;
        for (; slots[place].thread != nullptr; place = (place + 1) & mask) {
            if (slots[place].hash == hash &&
                canonicallyEqual(slots[place].thread->id(), thread.id())) {
                preconditionFailure(std::string("Duplicate values for key: '").append(thread.id()) +
                                    "'");
            }
        }
        slots[place] = {hash, &thread};
    }
}

} // namespace

std::vector<ThreadRecord>
TaskCompletionTracker::completedThreads(const std::vector<ThreadRecord> &threads) {
    requireDistinctIDs(threads);
    std::vector<ThreadRecord> completed;
    decltype(m_running) running;
    for (const ThreadRecord &thread : threads) {
        if (thread->runState == ThreadRunState::running) {
            running.insert(thread);
        } else if (!m_running.empty() && m_running.contains(thread)) {
            completed.push_back(thread);
        }
    }
    m_running = std::move(running);
    return completed;
}

} // namespace tallyview
