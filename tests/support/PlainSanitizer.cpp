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

class Replacement {
public:
    Replacement(const char *pattern, const char *replacement)
        : m_matcher(icu::UnicodeString(pattern), 0, m_status)
        , m_replacement(replacement) {
        m_matcher.setStackLimit(0, m_status);
    }

    void applyTo(icu::UnicodeString &text) {
        const icu::UnicodeString input = text;
        text = m_matcher.reset(input).replaceAll(m_replacement, m_status);
        if (U_FAILURE(m_status)) {
            throw std::runtime_error(u_errorName(m_status));
        }
    }

private:
    UErrorCode m_status = U_ZERO_ERROR;
    icu::RegexMatcher m_matcher;
    icu::UnicodeString m_replacement;
};

} // namespace

std::string plainlyRedacted(std::string_view text) {
    static Replacement replacements[] = {{keyedValues, "$1$2[REDACTED]"},
                                         {serviceKeys, "sk-[REDACTED]"},
                                         {webTokens, "[REDACTED_JWT]"},
                                         {phones, "$1****$2"}};
    auto result = icu::UnicodeString::fromUTF8(text);
    for (Replacement &each : replacements) {
        each.applyTo(result);
    }
    std::string bytes;
    return result.toUTF8String(bytes);
}

} // namespace tallyview
