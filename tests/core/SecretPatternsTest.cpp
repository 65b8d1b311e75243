#include "core/TextSanitizer.h"
#include "tests/support/PlainSanitizer.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tallyview {
namespace {

std::string narrow(const icu::UnicodeString &text) {
    std::string result;
    return text.toUTF8String(result);
}

std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> pieces{""};
    for (const char byte : text) {
        if (byte == '|') {
            pieces.emplace_back();
        } else {
            pieces.back() += byte;
        }
    }
    return pieces;
}

/// Draws texts from a vocabulary; the same ones in every run.
class TextGenerator {
public:
    explicit TextGenerator(std::string_view vocabulary) : m_vocabulary(split(vocabulary)) {}

    std::string next() {
        std::string text;
        for (std::size_t count = 1 + m_random() % 24; count > 0; --count) {
            text += m_vocabulary[m_random() % m_vocabulary.size()];
        }
        return text;
    }

private:
    std::vector<std::string> m_vocabulary;
    std::mt19937 m_random{20'231};
};

/// Whether the text had something to mask; both have to see the same.
bool agreesOnSecret(PlainSanitizer &reference, const std::string &text) {
    const std::string masked = reference.redacted(text);
    EXPECT_EQ(TextSanitizer::redact(text), masked) << testing::PrintToString(text);
    return masked != text;
}

/// `text` with `character` for every "@".
std::string filledIn(std::string_view text, const std::string &character) {
    std::string result;
    for (const char byte : text) {
        result += byte == '@' ? character : std::string(1, byte);
    }
    return result;
}

TEST(SecretPatterns, agreeWithTheExpressionsOnRandomTexts) {
    constexpr auto keys =
        "token|token|password|api-key|=|=|:|:|abcdefgh|abcdefgh|picp|api|key|access|refresh|secret|"
        "pass|word|TOKEN|ſecret|to\u212Aen|paßword|acceẞ|"
        "authorization|_|-|:|=|\"|'| |\t|\r\n|\u0085|\u00A0|\u2028|\u3000|\u200B|abcdefgh|12345678|"
        "x|文|😀|\\|,|}|\u0301|s|k|ss";
    constexpr auto values =
        "token:|password=|token|=|:|'|\"| |\n|abcd|efgh|x|文|\u0301|😀|\\|,|}|sk-|13812345678|eyJ";
    constexpr auto serviceKeys =
        "sk-|sk-|abcdef|abcdefghijkl|x|_|-|K|9| |.|文|\u0301|token=|é|\r\n";
    constexpr auto webTokens =
        "eyJ|.|eyJabcdefgh.|eyJabcdefgh.abcdefgh.|eyJ-eyJ-eyJ-.|.abcdefgh|.abcdefgh|"
        "abcdefgh.abcdefgh|abcdefgh.abcdefgh|abcd|abcdefgh|-|_|-----"
        "---| |文|\u0301|\u00AD|\u200D|\u200C|"
        "\u0903|\u203F|٣|$|x";
    constexpr auto phones =
        "1|13|138|12345678|1381234567|13812345678|٣|९|𝟗|²|Ⅷ|一|\u0301| |+86|a|\r\n|3|9";
    PlainSanitizer reference;
    for (const auto *vocabulary : {keys, values, serviceKeys, webTokens, phones}) {
        TextGenerator generator(vocabulary);
        int secrets = 0;
        for (int round = 0; round < 20'000 && !HasFailure(); ++round) {
            secrets += agreesOnSecret(reference, generator.next()) ? 1 : 0;
        }
        EXPECT_GT(secrets, 2'000) << vocabulary;
    }
}

TEST(SecretPatterns, agreeWithTheExpressionsOnEveryCharacterInEveryPlace) {
    constexpr std::string_view places =
        "token@=abcdefgh token=@abcdefgh token=abcdefg@\ntoken@:'@'abcdefgh\n@sk-abcdefghijkl@ "
        "@eyJabcdefgh.abcdefgh.abcdefgh@ a@eyJabcdefgh.abcdefgh.abcdefgh@a\n13@12345678 "
        "@13812345678 13812345678@";
    const auto isTested = [](UChar32 codePoint) {
        return !U_IS_SURROGATE(codePoint) && u_charType(codePoint) != U_PRIVATE_USE_CHAR &&
               u_charType(codePoint) != U_UNASSIGNED &&
               !(codePoint >= 0x3500 && codePoint < 0x9FF0) &&
               !(codePoint >= 0xAC80 && codePoint < 0xD780);
    };
    PlainSanitizer reference;
    for (UChar32 codePoint = 1; codePoint < 0x1FFFF && !HasFailure(); ++codePoint) {
        if (isTested(codePoint)) {
            agreesOnSecret(reference, filledIn(places, narrow(icu::UnicodeString(codePoint))));
        }
    }
}

TEST(SecretPatterns, agreeWithTheExpressionsOnEveryCharacterThatFoldsToLetters) {
    const std::vector<std::string> keyWords =
        split("authorization|picptoken|api-key|accesstoken|refresh_token|token|secret|password");
    PlainSanitizer reference;
    for (UChar32 codePoint = 0x80; codePoint <= 0x10FFFF && !HasFailure(); ++codePoint) {
        const std::string folded = narrow(icu::UnicodeString(codePoint).foldCase());
        if (U_IS_SURROGATE(codePoint) || static_cast<unsigned char>(folded.front()) >= 0x80) {
            continue;
        }
        for (const std::string &keyWord : keyWords) {
            for (std::size_t at = 0; at < keyWord.size(); ++at) {
                std::string changed = keyWord;
                changed.replace(at, std::min(folded.size(), keyWord.size() - at),
                                narrow(icu::UnicodeString(codePoint)));
                agreesOnSecret(reference, changed + "=abcdefgh");
            }
        }
    }
}

} // namespace
} // namespace tallyview
