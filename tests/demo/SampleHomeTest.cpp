#include "demo/SampleHome.h"

#include "core/OrvikThreadStore.h"
#include "core/ThreadRunStateResolver.h"
#include "demo/Rollout.h"
#include "tests/support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

namespace tallyview::demo {
namespace {

using testing::AllOf;
using testing::Ge;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Le;

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

TEST(SampleHome, TellsTheTruthAboutItsThreads) {
    struct Case {
        const char *name;
        std::size_t threads;
        SampleJournal journal;
        SampleRollouts rollouts;
    };
    const std::array cases{
        Case{"realistic", 1000, SampleJournal::wal, SampleRollouts::realistic},
        Case{"small files, rollback journal", 700, SampleJournal::rollback, SampleRollouts::small},
        Case{"no files", 300, SampleJournal::wal, SampleRollouts::none},
        Case{"heavy", 60, SampleJournal::wal, SampleRollouts::heavy},
        Case{"one thread", 1, SampleJournal::wal, SampleRollouts::realistic},
        Case{"no thread", 0, SampleJournal::wal, SampleRollouts::realistic},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.name);
        const tests::TemporaryHome folder;
        SampleOptions sample = options(folder, each.threads);
        sample.journal = each.journal;
        sample.rollouts = each.rollouts;
        const SampleHome home = writeSampleHome(sample).value();

        std::map<std::string, std::string> expected;
        for (const SampleThread &thread : home.threads) {
            expected[thread.id] = std::string(thread.isRunning ? "running" : "completed") +
                                  (thread.isArchived ? " archived" : "") +
                                  (thread.isSubagent ? " subagent" : "");
        }
        std::map<std::string, std::string> found;
        const auto threads = OrvikThreadStore(home.database).listThreads();
        ASSERT_TRUE(threads.has_value()) << threads.error().description();
        for (const ThreadRecord &thread : *threads) {
            found[thread.id()] = std::string(rawValue(thread->runState)) +
                                 (thread->archived ? " archived" : "") +
                                 (thread->isSubagent ? " subagent" : "");
        }
        EXPECT_EQ(expected.size(), each.threads);
        std::vector<std::pair<std::string, std::string>> differences;
        std::ranges::set_symmetric_difference(expected, found, std::back_inserter(differences));
        EXPECT_THAT(differences, IsEmpty());
    }
}

TEST(SampleHome, HasHeavyRolloutsForATenthOfItsLiveThreads) {
    const tests::TemporaryHome folder;
    SampleOptions sample = options(folder, 300);
    sample.rollouts = SampleRollouts::heavy;
    std::size_t live = 0;
    std::size_t heavy = 0;
    const SampleHome home = writeSampleHome(sample).value();
    for (const SampleThread &thread : home.threads) {
        std::error_code missing;
        const auto size = std::filesystem::file_size(thread.rolloutPath, missing);
        live += thread.isArchived ? 0 : 1;
        heavy += !missing && !thread.isArchived && size > ThreadRunStateResolver().chunkSize();
    }
    EXPECT_THAT(heavy * 100 / live, AllOf(Ge(7U), Le(16U)));
}

/// How many threads are at most so old, and so for each age; then those without a time.
struct Spread {
    int lastHour = 0, halfDay = 0, week = 0, older = 0, timeless = 0;
};

Spread spread(const std::vector<ThreadRecord> &threads) {
    Spread result;
    for (const ThreadRecord &thread : threads) {
        if (!thread->updatedAt) {
            ++result.timeless;
            continue;
        }
        const double hours =
            (static_cast<double>(now) - thread->updatedAt->time_since_epoch().count()) / 3600;
        ++(hours < 1          ? result.lastHour
           : hours < 12       ? result.halfDay
           : hours < 7.0 * 24 ? result.week
                              : result.older);
    }
    return result;
}

TEST(SampleHome, HasSomethingForEveryView) {
    const tests::TemporaryHome folder;
    SampleOptions sample = options(folder, 400);
    sample.rollouts = SampleRollouts::small;
    const auto threads = OrvikThreadStore(writeSampleHome(sample)->database).listThreads().value();

    const Spread ages = spread(threads);
    EXPECT_THAT(ages.lastHour, Ge(15));
    EXPECT_THAT(ages.halfDay, Ge(25));
    EXPECT_THAT(ages.week, Ge(80));
    EXPECT_THAT(ages.older, Ge(120));
    EXPECT_THAT(ages.timeless, AllOf(Ge(1), Le(20)));

    std::set<std::string> projects;
    std::string texts;
    int running = 0;
    for (const ThreadRecord &thread : threads) {
        projects.insert(thread->project);
        texts += thread->title + '\n' + thread->preview + '\n';
        running += thread->runState == ThreadRunState::running ? 1 : 0;
    }
    EXPECT_EQ(projects.size(), 15U);
    EXPECT_THAT(running, AllOf(Ge(8), Le(20)));
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

TEST(SampleDatabase, KeepsRowsAsTheyAre) {
    const tests::TemporaryHome folder;
    const std::vector<SampleRow> written{
        {.id = "a", .title = "", .preview = std::string("x\0y\xFF", 4), .createdAt = -1},
        {.id = "b", .archived = 1LL << 40, .rolloutPath = "/nowhere"},
    };
    const std::filesystem::path path = folder.path() / "state.sqlite";
    ASSERT_TRUE(writeDatabase(path, written, SampleJournal::rollback).has_value());
    EXPECT_EQ(rows(path), written);
    EXPECT_THAT(writeDatabase(path, std::vector<SampleRow>{{.id = "a"}, {.id = "a"}}).error(),
                HasSubstr("UNIQUE"));
}

TEST(Rollout, AppendedEventsDecideTheRunState) {
    const tests::TemporaryHome folder;
    const std::filesystem::path path = folder.path() / "sessions" / "rollout.jsonl";
    const ThreadRunStateResolver resolver;
    const std::array steps{
        std::pair{"task_started", ThreadRunState::running},
        std::pair{"token_count", ThreadRunState::running},
        std::pair{"task_complete", ThreadRunState::completed},
        std::pair{"task_started", ThreadRunState::running},
        std::pair{"turn_aborted", ThreadRunState::completed},
    };
    for (const auto &[event, expected] : steps) {
        SCOPED_TRACE(event);
        ASSERT_TRUE(appendEvent(path, event).has_value());
        EXPECT_EQ(resolver.resolve(path, false), expected);
        EXPECT_EQ(rolloutTail(path).isInsideTask, expected == ThreadRunState::running);
    }
}

} // namespace
} // namespace tallyview::demo
