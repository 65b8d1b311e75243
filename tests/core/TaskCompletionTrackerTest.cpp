#include "core/TaskCompletionTracker.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace tallyview {
namespace {

/// What each of the lists in turn reports. Bars part the lists; a thread is its id, with a
/// trailing "+" when it runs.
std::string reported(const std::string &lists) {
    TaskCompletionTracker tracker;
    std::vector<ThreadRecord> list;
    std::string text;
    std::istringstream words(lists + " |");
    for (std::string word; words >> word;) {
        if (word == "|") {
            for (const ThreadRecord &thread : tracker.completedThreads(list)) {
                text += thread.id();
            }
            text += '|';
            list.clear();
        } else if (word.ends_with('+')) {
            word.pop_back();
            list.push_back(ThreadRecord({.id = word, .runState = ThreadRunState::running}));
        } else {
            list.push_back(ThreadRecord({.id = word}));
        }
    }
    return text;
}

TEST(TaskCompletionTracker, reportsTasksThatFinishedBetweenTwoLists) {
    for (const auto &[lists, expected] :
         std::vector<std::pair<std::string, std::string>>{{"A | A+ | A", "||A|"},
                                                          {"A+ | A+ | A | A", "||A||"},
                                                          {"A+ | | A", "|||"},
                                                          {"| A | A", "|||"},
                                                          {"A+ B+ C+ D | C D B+ A | B", "|CA|B|"},
                                                          {"\u00E9+ | e\u0301", "|e\u0301|"}}) {
        EXPECT_EQ(reported(lists), expected) << lists;
    }
}

TEST(TaskCompletionTrackerDeathTest, stopsAtARepeatedId) {
    EXPECT_EXIT(reported("100%s B+ 100%s+"), testing::KilledBySignal(SIGABRT),
                "^Fatal error: Duplicate values for key: '100%s'\n$");
    EXPECT_EXIT(reported("\u00E9 | \u00E9 e\u0301"), testing::KilledBySignal(SIGABRT),
                "Duplicate values for key: 'e\u0301'\n$");
}

} // namespace
} // namespace tallyview
