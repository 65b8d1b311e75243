#include "demo/SampleHome.h"

#include "core/OrvikThreadStore.h"
#include "demo/Rollout.h"
#include "tests/support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <map>
#include <set>

namespace tallyview::demo {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;
using testing::Pair;

constexpr std::int64_t now = 1'790'000'000;

std::string contents(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Every file of a home but the database, whose bytes depend on the library's version.
std::map<std::string, std::string> files(const std::filesystem::path &home) {
    std::map<std::string, std::string> result;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(home)) {
        if (entry.is_regular_file() && entry.path().extension() != ".sqlite") {
            result[entry.path().string()] = contents(entry.path());
        }
    }
    return result;
}

std::vector<SampleRow> rows(const std::filesystem::path &database) {
    return SampleDatabase::open(database)->rows().value();
}

SampleOptions options(const tests::TemporaryHome &home, std::size_t threads) {
    return {.home = home.path(), .threads = threads, .nowSeconds = now};
}

TEST(SampleHome, IsTheSameForTheSameOptions) {
    const tests::TemporaryHome folder;
    const SampleHome first = writeSampleHome(options(folder, 120)).value();
    const auto firstFiles = files(folder.path());
    const auto firstRows = rows(first.database);

    const SampleHome second = writeSampleHome(options(folder, 120)).value();
    EXPECT_EQ(files(folder.path()), firstFiles);
    EXPECT_EQ(rows(second.database), firstRows);

    SampleOptions other = options(folder, 120);
    other.seed = 2;
    EXPECT_NE(rows(writeSampleHome(other)->database), firstRows);
}

std::string description(bool isRunning, bool isArchived, bool isSubagent) {
    return std::string(isRunning ? "running" : "completed") + (isArchived ? " archived" : "") +
           (isSubagent ? " subagent" : "");
}

TEST(SampleHome, TellsTheTruthAboutItsThreads) {
    struct Case {
        std::size_t threads;
        SampleJournal journal;
        SampleRollouts rollouts;
    };
    const std::array cases{
        Case{1000, SampleJournal::wal, SampleRollouts::realistic},
        Case{700, SampleJournal::rollback, SampleRollouts::small},
        Case{300, SampleJournal::wal, SampleRollouts::none},
        Case{0, SampleJournal::wal, SampleRollouts::realistic},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.threads);
        const tests::TemporaryHome folder;
        SampleOptions sample = options(folder, each.threads);
        sample.journal = each.journal;
        sample.rollouts = each.rollouts;
        const SampleHome home = writeSampleHome(sample).value();

        std::map<std::string, std::string> expected;
        for (const SampleThread &thread : home.threads) {
            expected[thread.id] =
                description(thread.isRunning, thread.isArchived, thread.isSubagent);
        }
        std::map<std::string, std::string> found;
        const auto threads = OrvikThreadStore(home.database).listThreads().value();
        for (const ThreadRecord &thread : threads) {
            found[thread.id()] = description(thread->runState == ThreadRunState::running,
                                             thread->archived, thread->isSubagent);
        }
        EXPECT_EQ(expected.size(), each.threads);
        EXPECT_EQ(found, expected);
    }
}

TEST(SampleHome, HasSomethingForEveryView) {
    const tests::TemporaryHome folder;
    SampleOptions sample = options(folder, 400);
    sample.rollouts = SampleRollouts::small;
    const auto threads = OrvikThreadStore(writeSampleHome(sample)->database).listThreads().value();

    std::map<std::string, int> found;
    std::set<std::string> projects;
    std::string texts;
    for (const ThreadRecord &thread : threads) {
        const auto updated = thread->updatedAt.value_or(Instant()).time_since_epoch().count();
        const double hours = (static_cast<double>(now) - updated) / 3600;
        ++found[!thread->updatedAt ? "timeless"
                : hours < 1        ? "last hour"
                : hours < 12       ? "half a day"
                : hours < 7 * 24   ? "week"
                                   : "older"];
        found["running"] += thread->runState == ThreadRunState::running ? 1 : 0;
        projects.insert(thread->project);
        texts += thread->title + '\n' + thread->preview + '\n';
    }
    EXPECT_THAT(found, ElementsAre(Pair("half a day", Ge(25)), Pair("last hour", Ge(15)),
                                   Pair("older", Ge(120)), Pair("running", AllOf(Ge(8), Le(20))),
                                   Pair("timeless", AllOf(Ge(1), Le(20))), Pair("week", Ge(80))));
    EXPECT_EQ(projects.size(), 15U);
    for (const char *expected :
         {"api_key: [REDACTED]", "sk-[REDACTED]", "[REDACTED_JWT]", "138****5678", "<b>Bold</b>",
          "&amp;", "<img src=", "🚀", "إصلاح", "未命名任务", "修复", "Fix "}) {
        EXPECT_THAT(texts, HasSubstr(expected));
    }
}

TEST(SampleHome, LeavesOtherAgentDataAlone) {
    const tests::TemporaryHome folder;
    const std::filesystem::path database = stateDatabase(folder.path());
    ASSERT_TRUE(appendText(database, "somebody's work").has_value());
    EXPECT_FALSE(writeSampleHome(options(folder, 3)).has_value());
    EXPECT_EQ(contents(database), "somebody's work");
}

} // namespace
} // namespace tallyview::demo
