#include "core/ThreadRecord.h"

#include <gtest/gtest.h>

#include <functional>
#include <unordered_set>
#include <vector>

namespace tallyview {
namespace {

Instant at(double seconds) { return Instant(Instant::duration(seconds)); }

ThreadRecord::Fields sample() {
    return {.id = "t1",
            .title = "Café",
            .preview = "预览",
            .project = "atlas",
            .projectPath = "/src/atlas",
            .source = "local",
            .model = "m",
            .reasoningEffort = "high",
            .branch = "main",
            .tokensUsed = 7,
            .createdAt = at(1.5),
            .updatedAt = at(2.5),
            .archived = false,
            .isSubagent = false,
            .runState = ThreadRunState::running};
}

TEST(ThreadRecord, differsWhenAnyFieldDiffers) {
    using Change = std::function<void(ThreadRecord::Fields &)>;
    const std::vector<Change> changes{
        [](auto &fields) { fields.id = "t2"; },
        [](auto &fields) { fields.title = "Cafe"; },
        [](auto &fields) { fields.preview = ""; },
        [](auto &fields) { fields.project = "Atlas"; },
        [](auto &fields) { fields.projectPath += '/'; },
        [](auto &fields) { fields.source = "cli"; },
        [](auto &fields) { fields.model = "n"; },
        [](auto &fields) { fields.reasoningEffort = "low"; },
        [](auto &fields) { fields.branch = "dev"; },
        [](auto &fields) { fields.tokensUsed = -7; },
        [](auto &fields) { fields.createdAt = at(1.25); },
        [](auto &fields) { fields.updatedAt = std::nullopt; },
        [](auto &fields) { fields.archived = true; },
        [](auto &fields) { fields.isSubagent = true; },
        [](auto &fields) { fields.runState = ThreadRunState::completed; },
        [](auto &fields) { std::swap(fields.createdAt, fields.updatedAt); },
        [](auto &fields) { std::swap(fields.model, fields.branch); }};
    std::unordered_set<ThreadRecord> distinct{ThreadRecord(sample())};
    std::unordered_set<std::size_t> hashes{ThreadRecord(sample()).hash()};
    for (const Change &change : changes) {
        auto fields = sample();
        change(fields);
        distinct.insert(ThreadRecord(fields));
        hashes.insert(ThreadRecord(fields).hash());
    }
    EXPECT_EQ(distinct.size(), changes.size() + 1);
    EXPECT_EQ(hashes.size(), changes.size() + 1);
}

TEST(ThreadRecord, takesEquivalentValuesAsEqual) {
    auto fields = sample();
    fields.title = "Cafe\u0301";
    fields.projectPath = "/src/\u212B";
    fields.createdAt = at(-0.0);
    auto others = sample();
    others.projectPath = "/src/A\u030A";
    others.createdAt = at(0.0);
    EXPECT_EQ(ThreadRecord(fields), ThreadRecord(others));
    EXPECT_EQ(ThreadRecord(fields).hash(), ThreadRecord(others).hash());
}

TEST(ThreadRecord, joinsWhatTheSearchLooksIn) {
    auto fields = sample();
    fields.title = "CAFE\u0301 Straße İ";
    fields.branch = "";
    EXPECT_EQ(ThreadRecord(fields).searchText(),
              "caf\u00E9 straße i\u0307 预览 atlas /src/atlas  local");
}

} // namespace
} // namespace tallyview
