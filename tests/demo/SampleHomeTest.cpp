#include "demo/SampleHome.h"

#include "core/OrvikThreadStore.h"
#include "demo/LiveAgent.h"
#include "demo/Rollout.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

namespace tallyview::demo {
namespace {

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
        std::set<std::tuple<std::string, bool, bool, bool>> told;
        for (const SampleThread &thread : write(500, rollouts).threads) {
            told.emplace(thread.id, thread.isRunning, thread.isArchived, thread.isSubagent);
        }
        decltype(told) found;
        for (const ThreadRecord &thread : listed()) {
            found.emplace(thread.id(), thread->runState == ThreadRunState::running,
                          thread->archived, thread->isSubagent);
        }
        EXPECT_EQ(told.size(), 500U);
        EXPECT_EQ(found, told);
    }
}

TEST_F(SampleHomeTest, HasSomethingForEveryView) {
    write(400);
    int lastHour = 0, halfADay = 0, week = 0, older = 0, timeless = 0;
    std::string texts;
    for (const ThreadRecord &thread : listed()) {
        const auto updated = thread->updatedAt.value_or(Instant()).time_since_epoch().count();
        const double hours = (static_cast<double>(now) - updated) / 3600;
        ++(!thread->updatedAt ? timeless
           : hours < 1        ? lastHour
           : hours < 12       ? halfADay
           : hours < 7 * 24   ? week
                              : older);
        for (const std::string_view text : {thread->project, thread->title, thread->preview}) {
            texts.append(text) += '\n';
        }
    }
    EXPECT_TRUE(lastHour >= 15 && halfADay >= 25 && week >= 80 && older >= 120 && timeless > 0);
    for (const char *expected : {"未归类", "订单中心", "font-tools", "[REDACTED]", "138****5678",
                                 "<b>Bold</b>", "🚀", "إصلاح", "未命名任务"}) {
        EXPECT_TRUE(texts.contains(expected)) << expected;
    }
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
