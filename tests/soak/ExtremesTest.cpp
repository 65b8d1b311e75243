#include "core/OrvikThreadStore.h"
#include "demo/Rollout.h"
#include "demo/SampleDatabase.h"
#include "tests/core/AgentDatabase.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <span>
#include <string>
#include <unistd.h>
#include <vector>

namespace tallyview {
namespace {

using demo::SampleRow;

constexpr std::size_t mebibyte = 1U << 20U;

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t sanitizerOverhead = 2; // around each allocation
#else
constexpr std::size_t sanitizerOverhead = 1;
#endif

/// A line of /proc/self/status, in bytes.
std::size_t memory(const std::string &name) {
    std::ifstream status("/proc/self/status");
    std::size_t kibibytes = 0;
    for (std::string word; word != name + ":" && status >> word;) {
    }
    status >> kibibytes;
    return kibibytes * 1024;
}

/// Homes that no agent leaves behind. Each is listed in bounded time and memory.
class ExtremesTest : public testing::Test {
protected:
    ~ExtremesTest() override { alarm(0); }

    void write(const std::vector<SampleRow> &rows) const {
        const auto written = demo::writeDatabase(database, rows);
        ASSERT_TRUE(written.has_value()) << written.error();
    }

    using Threads = std::vector<ThreadRecord>;

    /// Fails where listing takes more than `most` bytes beyond what the test holds itself.
    std::expected<Threads, OrvikThreadStoreError> read(std::size_t most,
                                                       std::span<const ThreadRecord> known) const {
        constexpr unsigned hang = 60;
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5"; // the peak starts again from here
        const std::size_t before = memory("VmRSS");
        alarm(hang);
        auto threads = OrvikThreadStore(database).listThreads(known);
        alarm(0);
        const std::size_t used = std::max(memory("VmHWM"), before) - before;
        EXPECT_LE(used, most * sanitizerOverhead);
        return threads;
    }

    Threads listed(std::size_t most, std::span<const ThreadRecord> known = {}) const {
        auto threads = read(most, known);
        EXPECT_TRUE(threads.has_value()) << threads.error().description();
        return threads.value_or(Threads());
    }

    std::ptrdiff_t runningListed(std::size_t most) const {
        return std::ranges::count_if(listed(most), [](const ThreadRecord &thread) {
            return thread->runState == ThreadRunState::running;
        });
    }

    tests::TemporaryHome home;
    std::filesystem::path database = home.path() / "state.sqlite";
    std::string rollout = home.path() / "rollout.jsonl";
};

TEST_F(ExtremesTest, fiveThousandThreadsOnOneRolloutFile) {
    ASSERT_TRUE(demo::appendEvent(rollout, "task_started").has_value());
    ASSERT_TRUE(demo::appendText(rollout, std::string(100'000, ' ') + '\n').has_value());
    std::vector<SampleRow> rows;
    for (int index = 0; index < 5000; ++index) {
        rows.push_back({.id = std::to_string(index), .rolloutPath = rollout});
    }
    write(rows);
    EXPECT_EQ(runningListed(32 * mebibyte), 5000);
}

TEST_F(ExtremesTest, aSparseRolloutFileOf4GiB) {
    constexpr std::uintmax_t size = 1ULL << 32U;
    ASSERT_TRUE(demo::appendEvent(rollout, "task_started").has_value());
    std::filesystem::resize_file(rollout, size);
    write({{.id = "a", .rolloutPath = rollout}});
    EXPECT_EQ(runningListed(16 * mebibyte), 1);
    ASSERT_TRUE(demo::appendEvent(rollout, "task_complete").has_value());
    EXPECT_EQ(runningListed(16 * mebibyte), 1);
    ASSERT_TRUE(demo::appendEvent(rollout, "task_complete").has_value());
    EXPECT_EQ(runningListed(16 * mebibyte), 0);
}

TEST_F(ExtremesTest, aTitleOf50Megabytes) {
    write({{.id = "a", .title = std::string(50'000'000, 'x') + " token=abcdefgh1"}, {.id = "b"}});
    const auto threads = listed(512 * mebibyte);
    ASSERT_EQ(threads.size(), 2U);
    EXPECT_TRUE(threads[0]->title.ends_with("x token=[REDACTED]"));
}

/// A view in place of the table that never ends, or only beyond all bounds, ends with an error.
TEST_F(ExtremesTest, aListThatNeverEnds) {
    struct Case {
        std::string title, condition, message;
        std::size_t most;
    };
    const Case cases[] = {
        {"'a'", "i > 1", "interrupted", 16 * mebibyte},
        {"'a'", "true", "interrupted", 1024 * mebibyte},
        {"hex(zeroblob(1000000 + i))", "true", "out of memory", 2100 * mebibyte},
        {"zeroblob(300000000 + i)", "true", "string or blob too big", 16 * mebibyte},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.title + " WHERE " + each.condition);
        std::filesystem::remove(database);
        std::string nulls;
        for (int column = 0; column < 17; ++column) {
            nulls += ", NULL";
        }
        Writer(database).execute("CREATE VIEW threads (" + columns +
                                 ") AS WITH n AS (SELECT 1 AS i"
                                 " UNION ALL SELECT i FROM n) SELECT i, " +
                                 each.title + nulls + " FROM n WHERE " + each.condition);
        const auto threads = read(each.most, {});
        EXPECT_EQ(threads ? "a list" : threads.error().text(), each.message);
    }
}

TEST_F(ExtremesTest, aMillionThreads) {
    constexpr int total = 1'000'000;
    auto written = demo::SampleDatabase::create(database, demo::SampleJournal::rollback);
    std::vector<SampleRow> rows(20'000, {.title = "Fix the reader", .cwd = "/src/atlas"});
    for (int next = 0; next < total;) {
        for (SampleRow &row : rows) {
            row.id = std::to_string(next++);
        }
        ASSERT_TRUE(written && written->write(rows));
    }
    const auto threads = listed(640 * mebibyte);
    EXPECT_EQ(threads.size(), static_cast<std::size_t>(total));
    EXPECT_EQ(listed(640 * mebibyte, threads).size(), threads.size());
}

} // namespace
} // namespace tallyview
