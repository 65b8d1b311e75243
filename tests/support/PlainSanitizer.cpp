#include "tests/support/PlainSanitizer.h"

#include "core/UnicodeText.h"

#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <array>
#include <stdexcept>
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

void require(UErrorCode status) {
    if (U_FAILURE(status)) {
        throw std::runtime_error(u_errorName(status));
    }
}

using Matcher = std::unique_ptr<icu::RegexMatcher>;

Matcher makeMatcher(std::string_view pattern) {
    UErrorCode status = U_ZERO_ERROR;
    auto matcher = std::make_unique<icu::RegexMatcher>(wide(pattern), 0, status);
    matcher->setStackLimit(0, status);
    require(status);
    return matcher;
}

void replaceAll(icu::RegexMatcher &matcher, const icu::UnicodeString &replacement,
                icu::UnicodeString &text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString input = text;
    text = matcher.reset(input).replaceAll(replacement, status);
    require(status);
}

icu::UnicodeString masked(const std::string &number) {
    const auto digits = characters(number);
    std::string result(prefixCharacters(number, 3));
    result += "****";
    for (std::size_t index = digits.size() - 4; index < digits.size(); ++index) {
        result += digits[index];
    }
    return wide(result);
}

void maskPhones(icu::RegexMatcher &matcher, icu::UnicodeString &text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString input = text;
    std::vector<std::array<std::int32_t, 2>> ranges;
    matcher.reset(input);
    while (matcher.find()) {
        ranges.push_back({matcher.start(status), matcher.end(status)});
    }
    require(status);
    for (; !ranges.empty(); ranges.pop_back()) {
        const auto [begin, end] = ranges.back();
        text.replaceBetween(begin, end, masked(narrow(input.tempSubStringBetween(begin, end))));
    }
}

} // namespace

struct PlainSanitizer::Matchers {
    Matcher keyedValues = makeMatcher(tallyview::keyedValues);
    Matcher serviceKeys = makeMatcher(R"((?<![A-Za-z0-9])sk-[A-Za-z0-9_-]{12,})");
    Matcher webTokens =
        makeMatcher(R"(\beyJ[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\b)");
    Matcher phones = makeMatcher(R"((?<!\d)1[3-9]\d{9}(?!\d))");
};

PlainSanitizer::PlainSanitizer() : m_matchers(std::make_unique<Matchers>()) {}
PlainSanitizer::~PlainSanitizer() = default;

std::string PlainSanitizer::redacted(std::string_view text) {
    icu::UnicodeString result = wide(text);
    replaceAll(*m_matchers->keyedValues, u"$1$2[REDACTED]", result);
    replaceAll(*m_matchers->serviceKeys, u"sk-[REDACTED]", result);
    replaceAll(*m_matchers->webTokens, u"[REDACTED_JWT]", result);
    maskPhones(*m_matchers->phones, result);
    return narrow(result);
}

} // namespace tallyview
