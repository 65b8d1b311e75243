#include "app/terminal/DisplayWidth.h"

#include "core/CodePoints.h"
#include "core/UnicodeText.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace tallyview {

namespace {

/// A vowel or final consonant that joins the syllable before it.
bool isInnerJamo(int codePoint) {
    const int type = u_getIntPropertyValue(codePoint, UCHAR_HANGUL_SYLLABLE_TYPE);
    return type == U_HST_VOWEL_JAMO || type == U_HST_TRAILING_JAMO;
}

} // namespace

int columnsOf(int codePoint) {
    if (codePoint < 0x300) {
        return 1;
    }
    if (codePoint >= 0x4E00 && codePoint < 0xA000) {
        return 2; // Han, without a look at any table
    }
    const auto type = u_charType(codePoint);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || isInnerJamo(codePoint)) {
        return 0;
    }
    const int width = u_getIntPropertyValue(codePoint, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size(); at += codePointLength(text, at)) {
        width += static_cast<std::size_t>(columnsOf(codePointAt(text, at)));
    }
    return width;
}

std::string_view fittingPrefix(std::string_view text, std::size_t columns) {
    std::size_t end = 0;
    visitCharacters(text, [&](std::string_view character) {
        const std::size_t width = displayWidth(character);
        if (width > columns) {
            return false;
        }
        columns -= width;
        end += character.size();
        return true;
    });
    return text.substr(0, end);
}

std::string cutTo(std::string_view text, std::size_t columns) {
    if (text.size() <= columns) {
        return std::string(text); // no character takes more columns than bytes
    }
    const std::string_view fitting = fittingPrefix(text, columns);
    if (fitting.size() == text.size() || columns == 0) {
        return std::string(fitting);
    }
    return std::string(fittingPrefix(fitting, columns - 1)) + "…";
}

std::string paddedTo(std::string text, std::size_t columns) {
    const std::size_t width = displayWidth(text);
    return std::move(text.append(columns > width ? columns - width : 0, ' '));
}

std::vector<std::string_view> wrappedAt(std::string_view text, std::size_t columns) {
    std::vector<std::string_view> lines;
    do {
        std::string_view line = fittingPrefix(text, columns);
        if (line.empty()) {
            line = prefixCharacters(text, 1);
        }
        lines.push_back(line);
        text.remove_prefix(line.size());
    } while (!text.empty());
    return lines;
}

} // namespace tallyview
