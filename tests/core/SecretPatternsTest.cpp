#include "core/TextSanitizer.h"
#include "core/UnicodeText.h"

#include <gtest/gtest.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <array>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tallyview {
namespace {

constexpr std::string_view keyedValues =
    R"~((?i)(authorization|picptoken|api[_-]?key|access[_-]?token|refresh[_-]?token|token|secret|password)(\s*[\"']?\s*[:=]\s*[\"']?)([^\s\"'\\,}]{8,}))~";
static_assert(keyedValues.size() == 143);

icu::UnicodeString wide(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string narrow(const icu::UnicodeString &text) {
    std::string result;
    return text.toUTF8String(result);
}

/// Masking by ICU's matcher, which the product's scanners have to agree with.
class Reference {
public:
    std::string redacted(std::string_view text) {
        icu::UnicodeString result = wide(text);
        replaceAll(*m_keyedValues, u"$1$2[REDACTED]", result);
        replaceAll(*m_serviceKeys, u"sk-[REDACTED]", result);
        replaceAll(*m_webTokens, u"[REDACTED_JWT]", result);
        maskPhones(result);
        return narrow(result);
    }

private:
    using Matcher = std::unique_ptr<icu::RegexMatcher>;

    static Matcher makeMatcher(std::string_view pattern) {
        UErrorCode status = U_ZERO_ERROR;
        auto matcher = std::make_unique<icu::RegexMatcher>(wide(pattern), 0, status);
        matcher->setStackLimit(0, status);
        EXPECT_TRUE(U_SUCCESS(status)) << pattern;
        return matcher;
    }

    static void replaceAll(icu::RegexMatcher &matcher, const icu::UnicodeString &replacement,
                           icu::UnicodeString &text) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString input = text;
        text = matcher.reset(input).replaceAll(replacement, status);
        EXPECT_TRUE(U_SUCCESS(status));
    }

    void maskPhones(icu::UnicodeString &text) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString input = text;
        std::vector<std::array<std::int32_t, 2>> ranges;
        m_phones->reset(input);
        while (m_phones->find()) {
            ranges.push_back({m_phones->start(status), m_phones->end(status)});
        }
        for (; !ranges.empty(); ranges.pop_back()) {
            const auto [begin, end] = ranges.back();
            const std::string number = narrow(input.tempSubStringBetween(begin, end));
            const auto digits = characters(number);
            std::string masked(prefixCharacters(number, 3));
            masked += "****";
            for (std::size_t index = digits.size() - 4; index < digits.size(); ++index) {
                masked += digits[index];
            }
            text.replaceBetween(begin, end, wide(masked));
        }
    }

    Matcher m_keyedValues = makeMatcher(keyedValues);
    Matcher m_serviceKeys = makeMatcher(R"((?<![A-Za-z0-9])sk-[A-Za-z0-9_-]{12,})");
    Matcher m_webTokens =
        makeMatcher(R"(\beyJ[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\b)");
    Matcher m_phones = makeMatcher(R"((?<!\d)1[3-9]\d{9}(?!\d))");
};

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

void expectAgreement(Reference &reference, const std::string &text) {
    ASSERT_EQ(TextSanitizer::redact(text), reference.redacted(text))
        << testing::PrintToString(text);
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
        "token|picp|api|key|access|refresh|secret|pass|word|TOKEN|ſecret|to\u212Aen|paßword|acceẞ|"
        "authorization|_|-|:|=|\"|'| |\t|\r\n|\u0085|\u00A0|\u2028|\u3000|\u200B|abcdefgh|12345678|"
        "x|文|😀|\\|,|}|\u0301|s|k|ss";
    constexpr auto values =
        "token:|password=|token|=|:|'|\"| |\n|abcd|efgh|x|文|\u0301|😀|\\|,|}|sk-|13812345678|eyJ";
    constexpr auto serviceKeys = "sk-|sk-|abcdef|ghijkl|x|_|-|K|9| |.|文|\u0301|token=|é|\r\n";
    constexpr auto webTokens =
        "eyJ|eyJ|eyJ|.|.|.|abcdefgh|abcdefgh|abcd|-|_|--------| |文|\u0301|\u00AD|\u200D|\u200C|"
        "\u0903|\u203F|٣|$|x";
    constexpr auto phones =
        "1|13|138|12345678|1381234567|13812345678|٣|९|𝟗|²|Ⅷ|一|\u0301| |+86|a|\r\n|3|9";
    Reference reference;
    for (const auto *vocabulary : {keys, values, serviceKeys, webTokens, phones}) {
        TextGenerator generator(vocabulary);
        for (int round = 0; round < 20'000; ++round) {
            expectAgreement(reference, generator.next());
            if (HasFatalFailure()) {
                return;
            }
        }
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
    Reference reference;
    for (UChar32 codePoint = 1; codePoint < 0x1FFFF; ++codePoint) {
        if (isTested(codePoint)) {
            expectAgreement(reference, filledIn(places, narrow(icu::UnicodeString(codePoint))));
        }
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(SecretPatterns, agreeWithTheExpressionsOnEveryCharacterThatFoldsToLetters) {
    const std::vector<std::string> keyWords =
        split("authorization|picptoken|api-key|accesstoken|refresh_token|token|secret|password");
    Reference reference;
    for (UChar32 codePoint = 0x80; codePoint <= 0x10FFFF; ++codePoint) {
        const std::string folded = narrow(icu::UnicodeString(codePoint).foldCase());
        if (U_IS_SURROGATE(codePoint) || static_cast<unsigned char>(folded.front()) >= 0x80) {
            continue;
        }
        for (const std::string &keyWord : keyWords) {
            for (std::size_t at = 0; at < keyWord.size(); ++at) {
                std::string changed = keyWord;
                changed.replace(at, std::min(folded.size(), keyWord.size() - at),
                                narrow(icu::UnicodeString(codePoint)));
                expectAgreement(reference, changed + "=abcdefgh");
                if (HasFatalFailure()) {
                    return;
                }
            }
        }
    }
}

} // namespace
} // namespace tallyview
