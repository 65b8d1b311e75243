#include "core/TaskCompletionTracker.h"

#include <gtest/gtest.h>

#include <ranges>
#include <sstream>
#include <string>
#include <vector>

namespace tallyview {
namespace {

/// What each of the lists in turn reports. A bar stands between lists; a thread is its id, with a
/// "+" before it when it runs.
std::string reported(std::string_view lists) {
    TaskCompletionTracker tracker;
    std::string text;
    for (const auto list : std::views::split(lists, '|')) {
        std::vector<ThreadRecord> threads;
        std::istringstream words(std::string(list.begin(), list.end()));
        for (std::string word; words >> word;) {
            const bool runs = word.starts_with('+');
            threads.push_back(ThreadRecord(
                {.id = word.substr(runs ? 1 : 0),
                 .runState = runs ? ThreadRunState::running : ThreadRunState::completed}));
        }
        for (const ThreadRecord &thread : tracker.completedThreads(threads)) {
            text += thread.id();
        }
        text += '|';
    }
    return text;
}

TEST(TaskCompletionTracker, reportsTasksThatFinishedBetweenTwoLists) {
    EXPECT_EQ(reported("A | +A | A | A"), "||A||");
    EXPECT_EQ(reported("+A | | A"), "|||");
    EXPECT_EQ(reported("+A +B +C D | C D +B A | B"), "|CA|B|");
    EXPECT_EQ(reported("+\u00E9 | e\u0301"), "|e\u0301|");
}

TEST(TaskCompletionTrackerDeathTest, stopsAtARepeatedId) {
    EXPECT_EXIT(reported("+100%s B +100%s"), testing::KilledBySignal(SIGABRT),
                "^Fatal error: Duplicate values for key: '100%s'\n$");
    EXPECT_EXIT(reported("\u00E9 | \u00E9 e\u0301"), testing::KilledBySignal(SIGABRT),
                "Duplicate values for key: 'e\u0301'\n$");
}

} // namespace
} // namespace tallyview
