#include "tests/support/PlainCore.h"

#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <stdexcept>

namespace tallyview {

namespace {

constexpr const char *keyedValues =
    R"~((?i)(authorization|picptoken|api[_-]?key|access[_-]?token|refresh[_-]?token|token|secret|password)(\s*[\"']?\s*[:=]\s*[\"']?)([^\s\"'\\,}]{8,}))~";
constexpr const char *serviceKeys = R"((?<![A-Za-z0-9])sk-[A-Za-z0-9_-]{12,})";
constexpr const char *webTokens =
    R"(\beyJ[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\b)";
constexpr const char *phones = R"((?<!\d)(1[3-9]\d)\d{4}(\d{4})(?!\d))";

struct Replacement {
    icu::RegexMatcher matcher;
    const char *text;
};

} // namespace

std::string plainlyRedacted(std::string_view text) {
    static UErrorCode status = U_ZERO_ERROR;
    const auto matcher = [](const char *pattern) {
        return icu::RegexMatcher(icu::UnicodeString(pattern), 0, status);
    };
    static Replacement replacements[] = {{matcher(keyedValues), "$1$2[REDACTED]"},
                                         {matcher(serviceKeys), "sk-[REDACTED]"},
                                         {matcher(webTokens), "[REDACTED_JWT]"},
                                         {matcher(phones), "$1****$2"}};
    auto result = icu::UnicodeString::fromUTF8(text);
    for (auto &[expression, replacement] : replacements) {
        const icu::UnicodeString input = result;
        expression.setStackLimit(0, status);
        result = expression.reset(input).replaceAll(replacement, status);
    }
    if (U_FAILURE(status)) {
        throw std::runtime_error(u_errorName(status));
    }
    std::string bytes;
    return result.toUTF8String(bytes);
}

} // namespace tallyview
