#include "demo/LiveAgent.h"

#include "core/OrvikThreadStore.h"
#include "core/TaskCompletionTracker.h"
#include "demo/SampleHome.h"
#include "tests/support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tallyview::demo {
namespace {

using testing::AllOf;
using testing::Ge;
using testing::Gt;
using testing::Le;
using testing::UnorderedElementsAreArray;

constexpr std::int64_t now = 1'790'000'000;

std::vector<std::string> runningIds(const std::vector<ThreadRecord> &threads) {
    std::vector<std::string> ids;
    for (const ThreadRecord &thread : threads) {
        if (thread->runState == ThreadRunState::running) {
            ids.push_back(thread.id());
        }
    }
    return ids;
}

std::size_t archivedCount(const std::vector<ThreadRecord> &threads) {
    return static_cast<std::size_t>(std::ranges::count_if(
        threads, [](const ThreadRecord &thread) { return thread->archived; }));
}

TEST(LiveAgent, KeepsTasksStartingAndEndingForEveryReader) {
    const tests::TemporaryHome folder;
    const auto home = writeSampleHome({.home = folder.path(), .threads = 60, .nowSeconds = now});
    const OrvikThreadStore store(home->database);
    auto agent = LiveAgent::resume(folder.path(), 7).value();
    const auto before = store.listThreads().value();

    // Threads with large files are no business of the agent's.
    std::set<std::string> leftAlone;
    for (const SampleThread &thread : home->threads) {
        std::error_code error;
        const auto size = std::filesystem::file_size(thread.rolloutPath, error);
        if (!error && size > 300'000) {
            leftAlone.insert(thread.id);
        }
    }

    TaskCompletionTracker tracker;
    tracker.completedThreads(before);
    std::size_t completed = 0;
    for (std::int64_t step = 1; step <= 150; ++step) {
        ASSERT_TRUE(agent.step((now + step * 4) * 1000).has_value());
        const auto threads = store.listThreads().value();
        auto running = runningIds(threads);
        std::erase_if(running, [&](const std::string &id) { return leftAlone.contains(id); });
        ASSERT_THAT(running, UnorderedElementsAreArray(agent.running()));
        if (step > 10) {
            ASSERT_THAT(running.size(), AllOf(Ge(3U), Le(20U)));
        }
        completed += tracker.completedThreads(threads).size();
    }

    const auto after = store.listThreads().value();
    EXPECT_THAT(completed, Gt(20U));
    EXPECT_THAT(after.size(), Gt(before.size()));
    EXPECT_THAT(archivedCount(after), Gt(archivedCount(before)));
    const auto latest =
        std::ranges::max(after, {}, [](const ThreadRecord &thread) { return thread->updatedAt; });
    EXPECT_EQ(latest->updatedAt->time_since_epoch().count(), now + 600.0);
}

TEST(LiveAgent, WorksOnlyInSampleHomes) {
    const tests::TemporaryHome folder;
    ASSERT_TRUE(SampleDatabase::create(stateDatabase(folder.path()), SampleJournal::wal));
    EXPECT_FALSE(LiveAgent::resume(folder.path(), 1).has_value());
}

} // namespace
} // namespace tallyview::demo
