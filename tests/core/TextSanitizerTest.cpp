#include "core/TextSanitizer.h"

#include "tests/support/PlainCore.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <random>
#include <ranges>
#include <string>
#include <string_view>
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
    for (const auto &[text, masked] :
         Pairs{{"'api_key': \"abcd1234efgh\"", "'api_key': \"[REDACTED]\""},
               {"Access-Token = ABCDEFGH9", "Access-Token = [REDACTED]"},
               {"mytoken: 13812345678", "mytoken: [REDACTED]"},
               {"SECRET\u3000:\n😀😀😀😀😀😀😀😀}", "SECRET\u3000:\n[REDACTED]}"},
               {"use sk-abcdefghijklmnop here", "use sk-[REDACTED] here"},
               {"(eyJabcdefgh.abcdefgh.abcdefgh--)", "([REDACTED_JWT]--)"},
               {"13812345678,19987654321", "138****5678,199****4321"},
               {"token=short 213812345678", "token=short 213812345678"}}) {
        EXPECT_EQ(TextSanitizer::redact(text), masked);
    }
}

TEST(TextSanitizer, masksTextsOfAnyLength) {
    EXPECT_EQ(TextSanitizer::redact("token=" + std::string(5'000'000, 'x')), "token=[REDACTED]");
    EXPECT_EQ(TextSanitizer::redact(repeated("sk-", 300'000) + ' '), "sk-[REDACTED] ");
    for (const std::string &text :
         {":token" + std::string(1'000'000, ' '), repeated("token: ", 100'000),
          repeated("eyJ-eyJ-eyJ-.eyJ-eyJ-eyJ-.x.", 40'000),
          repeated("\u0301", 300'000) + "eyJabcdefg", repeated("1", 1'000'000)}) {
        EXPECT_TRUE(TextSanitizer::redact(text) == text) << text.substr(0, 40);
    }
}

std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> words;
    for (const auto word : std::views::split(text, '|')) {
        words.emplace_back(word.begin(), word.end());
    }
    return words;
}

/// `text` with `character` for every "@".
std::string filledIn(std::string_view text, std::string_view character) {
    std::string filled;
    for (const char byte : text) {
        filled += byte == '@' ? character : std::string_view(&byte, 1);
    }
    return filled;
}

TEST(TextSanitizer, agreesWithTheExpressionsOnRandomTexts) {
    constexpr auto keys =
        "token|token|password|api-key|=|=|:|:|abcdefgh|abcdefgh|picp|api|key|access|refresh|secret|"
        "pass|word|TOKEN|ſecret|to\u212Aen|paßword|acceẞ|authorization|_|-|:|=|\"|'|\t|\r\n|\u0085|"
        " |\u00A0|\u2028|\u3000|\u200B|abcdefgh|12345678|x|文|😀|\\|,|}|\u0301|s|k|ss";
    constexpr auto values =
        "token:|password=|token|=|:|'|\"| |\n|abcd|efgh|x|文|\u0301|😀|\\|,|}|sk-|13812345678|eyJ";
    constexpr auto serviceKeys =
        "sk-|sk-|abcdef|abcdefghijkl|x|_|-|K|9| |.|文|\u0301|token=|é|\r\n";
    constexpr auto webTokens =
        "eyJ|.|eyJabcdefgh.|eyJabcdefgh.abcdefgh.|eyJ-eyJ-eyJ-.|.abcdefgh|.abcdefgh|"
        "abcdefgh.abcdefgh|abcdefgh.abcdefgh|abcd|abcdefgh|-|_|--------| |文|\u0301|\u00AD|\u200D|"
        "\u200C|\u0903|\u203F|٣|$|x";
    constexpr auto phones =
        "1|13|138|12345678|1381234567|13812345678|٣|९|𝟗|²|Ⅷ|一|\u0301| |+86|a|\r\n|3|9";
    std::mt19937 random(20'231); // NOLINT(*-msc51-cpp): the same texts in every run
    for (const auto *vocabulary : {keys, values, serviceKeys, webTokens, phones}) {
        const std::vector<std::string> words = split(vocabulary);
        int secrets = 0;
        for (int round = 0; round < 20'000; ++round) {
            std::string text;
            for (std::size_t count = 1 + random() % 24; count > 0; --count) {
                text += words[random() % words.size()];
            }
            const std::string masked = plainlyRedacted(text);
            ASSERT_EQ(TextSanitizer::redact(text), masked) << testing::PrintToString(text);
            secrets += masked == text ? 0 : 1;
        }
        EXPECT_GT(secrets, 2'000) << vocabulary;
    }
}

TEST(TextSanitizer, agreesWithTheExpressionsOnEveryCharacterInEveryPlace) {
    constexpr auto places =
        "token@=abcdefgh token=@abcdefgh token=abcdefg@\ntoken@:'@'abcdefgh\n@sk-abcdefghijkl@ "
        "@eyJabcdefgh.abcdefgh.abcdefgh@ a@eyJabcdefgh.abcdefgh.abcdefgh@a\n13@12345678 "
        "@13812345678 13812345678@";
    for (UChar32 codePoint = 1; codePoint < 0x1FFFF; ++codePoint) {
        if (U_IS_SURROGATE(codePoint) || !u_isdefined(codePoint) ||
            u_hasBinaryProperty(codePoint, UCHAR_UNIFIED_IDEOGRAPH)) {
            continue;
        }
        std::string character;
        icu::UnicodeString(codePoint).toUTF8String(character);
        const std::string text = filledIn(places, character);
        ASSERT_EQ(TextSanitizer::redact(text), plainlyRedacted(text)) << codePoint;
    }
}

TEST(TextSanitizer, namesProjects) {
    for (const auto &[path, name] : Pairs{{" \n\u3000", "未归类"},
                                          {" /Users/jose\u0301// ", "Home"},
                                          {"/users/jos\u00E9", "jos\u00E9"},
                                          {"/Users/jos\u00E9/src/atlas/", "atlas"},
                                          {"relative/dir/", "dir"},
                                          {" /// ", "///"},
                                          {"atlas", "atlas"},
                                          {"/a//b c/", "b c"},
                                          {"/a/\u0338/x", "x"},
                                          {"/src/x/\u0338", "x/\u0338"}}) {
        EXPECT_EQ(TextSanitizer::projectName(path, "/Users/jos\u00E9"), name) << path;
    }
    EXPECT_EQ(TextSanitizer::projectName("/", "/"), "Home");
}

TEST(TextSanitizer, asksTheEnvironmentForTheHomeDirectory) {
    setenv("HOME", "/var/somebody//", 1);
    EXPECT_EQ(TextSanitizer::projectName("/var/somebody"), "Home");
    setenv("HOME", "", 1);
    EXPECT_EQ(TextSanitizer::projectName("/var/somebody"), "somebody");
}

TEST(TextSanitizer, makesProjectCodes) {
    for (const auto &[name, code] : Pairs{{"MyCoolProject", "MCP"},
                                          {"ABCDEF", "ABC"},
                                          {"iOS-app", "OS"},
                                          {"React", "REA"},
                                          {"my_cool_project_x", "MCP"},
                                          {"x-", "X-"},
                                          {"项目 甲", "项甲"},
                                          {"", ""},
                                          {"ß-ﬁ", "SSFI"},
                                          {"éte\u0301s", "ÉTE\u0301"},
                                          {"ǅx Ǆ", "ǅǄ"},
                                          {"1st ½way x", "1½X"},
                                          {"a\u0301b c", "A\u0301C"},
                                          {"a\r\n😀ⓐ", "AⒶ"}}) {
        EXPECT_EQ(TextSanitizer::projectCode(name), code) << name;
    }
}

} // namespace
} // namespace tallyview
