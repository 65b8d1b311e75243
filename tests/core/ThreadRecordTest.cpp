#include "core/ThreadRecord.h"

#include <gtest/gtest.h>

#include <string>
#include <unordered_set>
#include <vector>

namespace tallyview {
namespace {

using Fields = ThreadRecord::Fields;

Instant at(double seconds) { return Instant(Instant::duration(seconds)); }

TEST(ThreadRecord, differsWhenAnyFieldDiffers) {
    std::vector<Fields> variants{{},
                                 {.tokensUsed = -1},
                                 {.createdAt = at(1)},
                                 {.createdAt = at(1.25)},
                                 {.updatedAt = at(1)},
                                 {.archived = true},
                                 {.isSubagent = true},
                                 {.runState = ThreadRunState::running}};
    for (const auto text :
         {&Fields::id, &Fields::title, &Fields::preview, &Fields::project, &Fields::projectPath,
          &Fields::source, &Fields::model, &Fields::reasoningEffort, &Fields::branch}) {
        variants.emplace_back().*text = "x";
    }
    std::unordered_set<std::size_t> hashes;
    for (const Fields &fields : variants) {
        EXPECT_EQ(ThreadRecord(fields) == ThreadRecord(Fields()), hashes.empty());
        hashes.insert(ThreadRecord(fields).hash());
    }
    EXPECT_EQ(hashes.size(), variants.size());
}

TEST(ThreadRecord, takesEquivalentValuesAsEqual) {
    const ThreadRecord one({.title = "Cafe\u0301", .createdAt = at(-0.0)});
    const ThreadRecord other({.title = "Caf\u00E9", .createdAt = at(0.0)});
    EXPECT_EQ(one, other);
    EXPECT_EQ(one.hash(), other.hash());
}

TEST(ThreadRecord, keepsTextsOfItsOwn) {
    std::string id = "019a3f20";
    std::string branch = "main";
    const ThreadRecord record({.id = id, .branch = branch});
    id = branch = "gone";
    EXPECT_EQ(record.id(), "019a3f20");
    EXPECT_EQ(ThreadRecord(record)->branch, "main");
}

TEST(ThreadRecord, joinsWhatTheSearchLooksIn) {
    const ThreadRecord record({.title = "CAFE\u0301 Straße İ",
                               .preview = "预览",
                               .project = "atlas",
                               .projectPath = "/src/atlas",
                               .source = "local",
                               .branch = "main"});
    EXPECT_EQ(record.searchText(), "caf\u00E9 straße i\u0307 预览 atlas /src/atlas main local");
}

} // namespace
} // namespace tallyview
