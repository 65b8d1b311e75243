#include "core/TaskCompletionTracker.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tallyview {
namespace {

/// One record per word: its id, with a trailing "+" when it runs.
std::vector<ThreadRecord> threads(const std::vector<std::string> &words) {
    std::vector<ThreadRecord> result;
    for (std::string id : words) {
        const bool runs = id.ends_with('+');
        if (runs) {
            id.pop_back();
        }
        result.emplace_back(ThreadRecord::Fields{
            .id = id, .runState = runs ? ThreadRunState::running : ThreadRunState::completed});
    }
    return result;
}

using Lists = std::vector<std::vector<std::string>>;

/// What each of the lists in turn reports, lists parted by bars.
std::string reported(const Lists &lists) {
    TaskCompletionTracker tracker;
    std::string text;
    for (const auto &list : lists) {
        for (const ThreadRecord &thread : tracker.completedThreads(threads(list))) {
            text += thread.id();
        }
        text += '|';
    }
    return text;
}

TEST(TaskCompletionTracker, reportsTasksThatFinishedBetweenTwoLists) {
    const std::vector<std::pair<Lists, std::string>> cases{
        {{{"A+"}, {"A"}}, "|A|"},
        {{{"A"}, {"A"}}, "||"},
        {{{"A+"}, {"A+"}, {"A"}, {"A"}}, "||A||"},
        {{{"A+"}, {}, {"A"}}, "|||"},
        {{{}, {"A"}}, "||"},
        {{{}, {"A+"}, {"A"}}, "||A|"},
        {{{"A"}, {"A+"}, {"A"}}, "||A|"},
        {{{"A+", "B+", "C+", "D"}, {"C", "D", "B+", "A"}, {"B"}}, "|CA|B|"},
        {{{"\u00E9+"}, {"e\u0301"}}, "|e\u0301|"},
    };
    for (const auto &[lists, expected] : cases) {
        EXPECT_EQ(reported(lists), expected) << testing::PrintToString(lists);
    }
}

TEST(TaskCompletionTrackerDeathTest, stopsAtARepeatedId) {
    EXPECT_EXIT(reported({{"A", "B+", "A+"}}), testing::KilledBySignal(SIGABRT),
                "^Fatal error: Duplicate values for key: 'A'\n$");
    EXPECT_EXIT(reported({{"\u00E9"}, {"\u00E9", "e\u0301"}}), testing::KilledBySignal(SIGABRT),
                "Duplicate values for key: 'e\u0301'\n$");
}

} // namespace
} // namespace tallyview
