#include "core/TextSanitizer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tallyview {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

std::string repeated(std::string_view part, std::size_t count) {
    std::string text;
    while (count-- > 0) {
        text += part;
    }
    return text;
}

TEST(TextSanitizer, masksSecrets) {
    const Pairs cases{
        {"password=hunter2hunter2", "password=[REDACTED]"},
        {"'api_key': 'abcd1234efgh'", "'api_key': '[REDACTED]'"},
        {"\"apikey\": \"abcd1234efgh\", x", "\"apikey\": \"[REDACTED]\", x"},
        {"Access-Token = ABCDEFGH9", "Access-Token = [REDACTED]"},
        {"mytoken=abcdefgh1", "mytoken=[REDACTED]"},
        {"api_key: abcdefgh12345678", "api_key: [REDACTED]"},
        {"token: 13812345678", "token: [REDACTED]"},
        {"token=一二三四五六七八", "token=[REDACTED]"},
        {"token=a b token==abcdefgh", "token=a b token=[REDACTED]"},
        {"SECRET\u3000:\n😀😀😀😀😀😀😀😀}", "SECRET\u3000:\n[REDACTED]}"},
        {"use sk-abcdefghijklmnop here", "use sk-[REDACTED] here"},
        {"文sk-abcdefghijkl", "文sk-[REDACTED]"},
        {"eyJabcdefgh.abcdefgh.abcdefgh", "[REDACTED_JWT]"},
        {"(eyJabcdefgh.abcdefgh.abcdefgh--)", "([REDACTED_JWT]--)"},
        {"eyJabcdefgh.eyJabcdefgh.abcdefgh.abcdefgh", "[REDACTED_JWT].abcdefgh"},
        {"call 13812345678 now", "call 138****5678 now"},
        {"13812345678,19987654321", "138****5678,199****4321"},
        {"13٣12345٦78", "13٣****5٦78"},
    };
    for (const auto &[text, masked] : cases) {
        EXPECT_EQ(TextSanitizer::redact(text), masked);
    }
}

TEST(TextSanitizer, leavesWhatIsNoSecret) {
    for (const char *text :
         {"", " \n ", "token=short", "tokens_used=12345678",
          "Authorization: Bearer abcdefghijklmnop", "task-abcdefghijklmnop", "sk-abcdefghijk",
          "xeyJabcdefgh.abcdefgh.abcdefgh", "eyJabcdefg.abcdefgh.abcdefgh",
          "eyJabcdefgh.abcdefgh.--------", "213812345678", "12812345678", "138123456789",
          "٣13812345678", "13812345678٣"}) {
        EXPECT_EQ(TextSanitizer::redact(text), text);
    }
}

TEST(TextSanitizer, masksTextsOfAnyLength) {
    const auto expectMasked = [](const char *name, const std::string &text,
                                 const std::string &expected) {
        const auto start = std::chrono::steady_clock::now();
        const bool isRight = TextSanitizer::redact(text) == expected;
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        EXPECT_TRUE(isRight) << name;
        std::cout << name << ": " << taken.count() << " ms\n";
    };
    expectMasked("value of 200,000", "token=" + std::string(200'000, 'x'), "token=[REDACTED]");
    expectMasked("value of 5,000,000", "token=" + std::string(5'000'000, 'x'), "token=[REDACTED]");
    for (const auto &[name, text] :
         Pairs{{"1,000,000 blanks", ":token" + std::string(1'000'000, ' ')},
               {"key words in blanks", repeated("token: ", 100'000)},
               {"\"eyJ-\"", repeated("eyJ-", 300'000)},
               {"dotted \"eyJ-\"", repeated("eyJ-eyJ-eyJ-.eyJ-eyJ-eyJ-.x.", 40'000)},
               {"\"sk-\"", repeated("sk-", 300'000) + ' '},
               {"combining marks", repeated("\u0301", 300'000) + "eyJabcdefg"},
               {"digits", repeated("1", 1'000'000)}}) {
        const bool isKey = name == "\"sk-\"";
        expectMasked(name.c_str(), text, isKey ? "sk-[REDACTED] " : text);
    }
}

TEST(TextSanitizer, namesProjects) {
    const Pairs cases{
        {"", "未归类"},
        {" \n\u3000", "未归类"},
        {"/Users/alice", "Home"},
        {" /Users/alice// ", "Home"},
        {"/users/alice", "alice"},
        {"/Users/alice/src/atlas/", "atlas"},
        {"relative/dir/", "dir"},
        {"/", "/"},
        {" /// ", "///"},
        {"atlas", "atlas"},
        {"/a//b c/", "b c"},
        {"/项目/前端", "前端"},
        {"/a/\u0338/x", "x"},
        {"/src/x/\u0338", "x/\u0338"},
    };
    for (const auto &[path, name] : cases) {
        EXPECT_EQ(TextSanitizer::projectName(path, "/Users/alice"), name) << path;
    }
    EXPECT_EQ(TextSanitizer::projectName("/home/jose\u0301", "/home/jos\u00E9"), "Home");
    EXPECT_EQ(TextSanitizer::projectName("/", "/"), "Home");
}

TEST(TextSanitizer, asksTheEnvironmentForTheHomeDirectory) {
    const char *const set = getenv("HOME");
    const std::string previous = set == nullptr ? "" : set;
    setenv("HOME", "/var/somebody//", 1);
    EXPECT_EQ(TextSanitizer::projectName("/var/somebody"), "Home");
    setenv("HOME", "", 1);
    EXPECT_EQ(TextSanitizer::projectName("/var/somebody"), "somebody");
    setenv("HOME", previous.c_str(), 1);
}

TEST(TextSanitizer, makesProjectCodes) {
    const Pairs cases{
        {"MyCoolProject", "MCP"},
        {"ABCDEF", "ABC"},
        {"iOS-app", "OS"},
        {"React", "REA"},
        {"data-pipe", "DP"},
        {"my_cool_project_x", "MCP"},
        {"web", "WEB"},
        {"x-", "X-"},
        {"Home", "HOM"},
        {"未归类", "未归类"},
        {"", ""},
        {"ß-ﬁ", "SSFI"},
        {"straße", "STR"},
        {"éte\u0301s", "ÉTE\u0301"},
        {"ǅx Ǆ", "ǅǄ"},
        {"1st ½way x", "1½X"},
        {"a\u0301b c", "A\u0301C"},
        {"--", "--"},
        {"-a", "-A"},
        {"项目 甲", "项甲"},
        {"a\r\nb", "AB"},
        {"x 😀 y", "XY"},
        {"ⓐ ⅷ", "ⒶⅧ"},
    };
    for (const auto &[name, code] : cases) {
        EXPECT_EQ(TextSanitizer::projectCode(name), code) << name;
    }
}

TEST(TextSanitizer, tellsSecondsFromMilliseconds) {
    using TextSanitizer::normalizedMilliseconds;
    EXPECT_EQ(normalizedMilliseconds({0, 1'700'000'000}), 1'700'000'000'000);
    EXPECT_EQ(normalizedMilliseconds({1'700'000'000'123}), 1'700'000'000'123);
    EXPECT_EQ(normalizedMilliseconds({999'999'999'999}), 999'999'999'999'000);
    EXPECT_EQ(normalizedMilliseconds({1'000'000'000'000}), 1'000'000'000'000);
    EXPECT_EQ(normalizedMilliseconds({std::numeric_limits<std::int64_t>::min(), 1, 2}), 1000);
    EXPECT_EQ(normalizedMilliseconds({-5, 0}), 0);
    EXPECT_EQ(normalizedMilliseconds({}), 0);
}

} // namespace
} // namespace tallyview
