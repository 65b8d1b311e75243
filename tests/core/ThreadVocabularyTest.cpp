#include "core/ThreadVocabulary.h"

#include <gtest/gtest.h>

#include <string>

namespace tallyview {
namespace {

template <class Enumeration>
std::string listed() {
    std::string text;
    for (const Enumeration value : allCases<Enumeration>) {
        text += std::string(rawValue(value)) + '=' + std::string(title(value)) + ' ';
        EXPECT_EQ(fromRawValue<Enumeration>(rawValue(value)), value);
    }
    return text;
}

TEST(ThreadVocabulary, listsCasesInTheirOrder) {
    EXPECT_EQ(listed<ThreadRunState>(), "running=进行中 completed=已完成 ");
    EXPECT_EQ(listed<TaskStatusFilter>(), "running=进行中 completed=已完成 all=全部 ");
    EXPECT_EQ(listed<TaskRecencyFilter>(), "recent=刚刚 today=今天 week=本周 older=更早 ");
}

TEST(ThreadVocabulary, takesExactRawValuesOnly) {
    for (const char *text : {"Running", "done", "", "running ", "进行中", "all"}) {
        EXPECT_EQ(fromRawValue<ThreadRunState>(text), std::nullopt) << text;
    }
    EXPECT_EQ(fromRawValue<TaskRecencyFilter>("WEEK"), std::nullopt);
    EXPECT_EQ(fromRawValue<TaskStatusFilter>("archived"), std::nullopt);
}

} // namespace
} // namespace tallyview
