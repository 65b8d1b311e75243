#include "core/TextSanitizer.h"

#include "core/CodePoints.h"
#include "core/HomeDirectory.h"
#include "core/SecretPatterns.h"
#include "core/UnicodeText.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <vector>

namespace tallyview::TextSanitizer {

namespace {

constexpr std::size_t codeLength = 3;

bool isPartOfWord(std::string_view character) {
    const UChar32 codePoint = codePointAt(character, 0);
    return u_isUAlphabetic(codePoint) != 0 ||
           u_getIntPropertyValue(codePoint, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

/// The first upper-case letters, at most as many as a code has.
std::vector<std::string_view> leadingCapitals(std::string_view name) {
    std::vector<std::string_view> capitals;
    for (std::size_t at = 0; at < name.size() && capitals.size() < codeLength;) {
        const std::size_t length = codePointLength(name, at);
        if ((U_GET_GC_MASK(codePointAt(name, at)) & (U_GC_LU_MASK | U_GC_LT_MASK)) != 0) {
            capitals.push_back(name.substr(at, length));
        }
        at += length;
    }
    return capitals;
}

/// The first characters of the first words, at most as many as a code has.
std::vector<std::string_view> leadingInitials(std::string_view name) {
    std::vector<std::string_view> initials;
    bool insideWord = false;
    visitCharacters(name, [&](std::string_view character) {
        const bool joinsWord = isPartOfWord(character);
        if (joinsWord && !insideWord) {
            initials.push_back(character);
        }
        insideWord = joinsWord;
        return initials.size() < codeLength;
    });
    return initials;
}

std::string joined(const std::vector<std::string_view> &parts) {
    std::string result;
    for (const std::string_view part : parts) {
        result += part;
    }
    return result;
}

/// A path without the slashes at its end, and its last part.
struct PathEnd {
    std::string_view path;
    std::string_view lastPart; ///< empty when there is nothing but slashes
};

/// `path` is not empty. A slash that carries a combining mark is another character.
PathEnd pathEnd(std::string_view path) {
    std::size_t begin = 0; // of the last part
    std::size_t end = 0;
    bool isInside = false;
    std::size_t at = 0;
    visitCharacters(path, [&](std::string_view character) {
        const bool isSlash = character == "/";
        if (!isSlash) {
            begin = isInside ? begin : at;
            end = at + character.size();
        }
        isInside = !isSlash;
        at += character.size();
        return true;
    });
    return {path.substr(0, std::max<std::size_t>(end, 1)), path.substr(begin, end - begin)};
}

} // namespace

std::string redact(std::string_view text) {
    std::string result(text);
    redactInPlace(result);
    return result;
}

void redactInPlace(std::string &text) {
    maskKeyedValues(text);
    maskServiceKeys(text);
    maskWebTokens(text);
    maskPhoneNumbers(text);
}

std::string projectName(std::string_view path) {
    return projectName(path, decodedUtf8(homeDirectory()));
}

std::string projectName(std::string_view path, std::string_view homeDirectory) {
    const std::string_view given = trimmed(path);
    if (given.empty()) {
        return "未归类";
    }
    const PathEnd end = pathEnd(given);
    if (canonicallyEqual(end.path, homeDirectory)) {
        return "Home";
    }
    return std::string(end.lastPart.empty() ? given : end.lastPart);
}

std::string projectCode(std::string_view name) {
    const auto capitals = leadingCapitals(name);
    if (capitals.size() >= 2) {
        return joined(capitals);
    }
    const auto initials = leadingInitials(name);
    if (initials.size() < 2) {
        return uppercased(prefixCharacters(name, codeLength));
    }
    return uppercased(joined(initials));
}

std::int64_t normalizedMilliseconds(std::initializer_list<std::int64_t> values) {
    constexpr std::int64_t leastMilliseconds = 1'000'000'000'000;
    const auto *const value = std::ranges::find_if(values, [](auto each) { return each >= 1; });
    if (value == values.end()) {
        return 0;
    }
    return *value < leastMilliseconds ? *value * 1000 : *value;
}

} // namespace tallyview::TextSanitizer
