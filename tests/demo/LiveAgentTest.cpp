#include "demo/LiveAgent.h"

#include "core/OrvikThreadStore.h"
#include "core/TaskCompletionTracker.h"
#include "demo/SampleHome.h"
#include "tests/support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallyview::demo {
namespace {

using testing::AllOf;
using testing::Ge;
using testing::Gt;
using testing::Le;
using testing::UnorderedElementsAreArray;

constexpr std::int64_t now = 1'790'000'000;

TEST(LiveAgent, KeepsTasksStartingAndEndingForEveryReader) {
    const tests::TemporaryHome folder;
    const auto home = writeSampleHome({.home = folder.path(),
                                       .threads = 60,
                                       .nowSeconds = now,
                                       .rollouts = SampleRollouts::small});
    const OrvikThreadStore store(home->database);
    auto agent = LiveAgent::resume(folder.path(), 7).value();
    const auto before = store.listThreads().value();

    TaskCompletionTracker tracker;
    tracker.completedThreads(before);
    std::size_t completed = 0;
    for (std::int64_t step = 1; step <= 150; ++step) {
        ASSERT_TRUE(agent.step((now + step * 4) * 1000).has_value());
        const auto threads = store.listThreads().value();
        std::vector<std::string> running;
        for (const ThreadRecord &thread : threads) {
            if (thread->runState == ThreadRunState::running) {
                running.push_back(thread.id());
            }
        }
        ASSERT_THAT(running, UnorderedElementsAreArray(agent.running()));
        if (step > 10) {
            ASSERT_THAT(running.size(), AllOf(Ge(3U), Le(20U)));
        }
        completed += tracker.completedThreads(threads).size();
    }
    EXPECT_THAT(completed, Gt(20U));
    EXPECT_THAT(store.listThreads()->size(), Gt(before.size()));
}

TEST(LiveAgent, WorksOnlyInSampleHomes) {
    const tests::TemporaryHome folder;
    ASSERT_TRUE(SampleDatabase::create(stateDatabase(folder.path()), SampleJournal::wal));
    EXPECT_FALSE(LiveAgent::resume(folder.path(), 1).has_value());
}

} // namespace
} // namespace tallyview::demo
