#include "demo/SampleHome.h"

#include "core/OrvikThreadStore.h"
#include "core/TaskCompletionTracker.h"
#include "demo/LiveAgent.h"
#include "demo/Rollout.h"
#include "tests/support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

namespace tallyview::demo {
namespace {

using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;
using testing::Pair;

constexpr std::int64_t now = 1'790'000'000;

class SampleHomeTest : public testing::Test {
protected:
    SampleHome write(std::size_t threads, SampleRollouts rollouts = SampleRollouts::small,
                     std::uint64_t seed = 1) const {
        return writeSampleHome({.home = folder.path(),
                                .threads = threads,
                                .seed = seed,
                                .nowSeconds = now,
                                .rollouts = rollouts})
            .value();
    }
    std::vector<ThreadRecord> listed() const {
        return OrvikThreadStore(stateDatabase(folder.path())).listThreads().value();
    }

    tests::TemporaryHome folder;
};

std::string description(const std::string &id, bool runs, bool archived, bool subagent) {
    return id + (runs ? " running" : "") + (archived ? " archived" : "") +
           (subagent ? " subagent" : "");
}

TEST_F(SampleHomeTest, IsTheSameForTheSameOptions) {
    write(120);
    const auto first = listed();
    write(120, SampleRollouts::small, 2);
    EXPECT_NE(listed(), first);
    write(120);
    EXPECT_EQ(listed(), first);
}

TEST_F(SampleHomeTest, TellsTheTruthAboutItsThreads) {
    for (const auto rollouts :
         {SampleRollouts::realistic, SampleRollouts::small, SampleRollouts::none}) {
        std::set<std::string> told;
        for (const SampleThread &thread : write(500, rollouts).threads) {
            told.insert(
                description(thread.id, thread.isRunning, thread.isArchived, thread.isSubagent));
        }
        std::set<std::string> found;
        for (const ThreadRecord &thread : listed()) {
            found.insert(description(thread.id(), thread->runState == ThreadRunState::running,
                                     thread->archived, thread->isSubagent));
        }
        EXPECT_EQ(told.size(), 500U);
        EXPECT_EQ(found, told);
    }
}

TEST_F(SampleHomeTest, HasSomethingForEveryView) {
    write(400);
    std::map<std::string, int> found;
    std::string texts;
    for (const ThreadRecord &thread : listed()) {
        const auto updated = thread->updatedAt.value_or(Instant()).time_since_epoch().count();
        const double hours = (static_cast<double>(now) - updated) / 3600;
        ++found[!thread->updatedAt ? "timeless"
                : hours < 1        ? "last hour"
                : hours < 12       ? "half a day"
                : hours < 7 * 24   ? "week"
                                   : "older"];
        texts += thread->project + '\n' + thread->title + '\n' + thread->preview + '\n';
    }
    EXPECT_THAT(found,
                ElementsAre(Pair("half a day", Ge(25)), Pair("last hour", Ge(15)),
                            Pair("older", Ge(120)), Pair("timeless", Ge(1)), Pair("week", Ge(80))));
    for (const char *expected : {"未归类", "订单中心", "font-tools", "[REDACTED]", "138****5678",
                                 "<b>Bold</b>", "🚀", "إصلاح", "未命名任务"}) {
        EXPECT_THAT(texts, HasSubstr(expected));
    }
}

TEST_F(SampleHomeTest, TheLiveAgentKeepsTasksStartingAndEnding) {
    write(60);
    auto agent = LiveAgent::resume(folder.path(), 7).value();
    TaskCompletionTracker tracker;
    std::size_t completed = 0;
    for (std::int64_t step = 1; step <= 150; ++step) {
        ASSERT_TRUE(agent.step((now + step * 4) * 1000).has_value());
        const auto threads = listed();
        std::set<std::string> running;
        for (const ThreadRecord &thread : threads) {
            if (thread->runState == ThreadRunState::running) {
                running.insert(thread.id());
            }
        }
        const auto wanted = agent.running();
        ASSERT_EQ(running, std::set<std::string>(wanted.begin(), wanted.end()));
        ASSERT_TRUE(step <= 10 || (running.size() >= 3 && running.size() <= 20));
        completed += tracker.completedThreads(threads).size();
    }
    EXPECT_GT(completed, 20U);
    EXPECT_GT(listed().size(), 60U);
}

TEST_F(SampleHomeTest, OtherAgentDataIsLeftAlone) {
    const auto database = stateDatabase(folder.path());
    ASSERT_TRUE(SampleDatabase::create(database, SampleJournal::wal));
    EXPECT_FALSE(LiveAgent::resume(folder.path(), 1).has_value());
    EXPECT_FALSE(writeSampleHome({.home = folder.path(), .nowSeconds = now}).has_value());
    EXPECT_TRUE(listed().empty());
}

} // namespace
} // namespace tallyview::demo
