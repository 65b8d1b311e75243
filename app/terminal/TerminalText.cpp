#include "app/terminal/TerminalText.h"

#include "app/terminal/DisplayWidth.h"
#include "core/CodePoints.h"

#include <unicode/uchar.h>

namespace tallyview {

namespace {

constexpr std::size_t mostMarks = 4;
constexpr std::string_view replacement = "\uFFFD";

/// Printable ASCII and Han, of which most texts are: to be seen without a look at any table.
bool isPlain(int codePoint) {
    return (codePoint >= 0x20 && codePoint < 0x7F) || (codePoint >= 0x4E00 && codePoint < 0xA000);
}

bool hasNoPlace(int codePoint) {
    return u_charType(codePoint) == U_FORMAT_CHAR ||
           u_hasBinaryProperty(codePoint, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) ||
           u_hasBinaryProperty(codePoint, UCHAR_EMOJI_MODIFIER);
}

} // namespace

bool actsOnTerminal(int codePoint) {
    if (isPlain(codePoint)) {
        return false;
    }
    const auto type = u_charType(codePoint);
    return type == U_CONTROL_CHAR || type == U_FORMAT_CHAR || type == U_LINE_SEPARATOR ||
           type == U_PARAGRAPH_SEPARATOR;
}

std::string terminalText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    std::size_t marksLeft = 0; // nothing stands before the first character to bear one
    for (std::size_t at = 0; at < text.size(); at += codePointLength(text, at)) {
        const int codePoint = codePointAt(text, at);
        const bool isMark = !isPlain(codePoint) && columnsOf(codePoint) == 0;
        if (isPlain(codePoint)) {
            result.append(text, at, codePointLength(text, at));
        } else if (u_isUWhiteSpace(codePoint)) {
            result += ' ';
        } else if (u_charType(codePoint) == U_CONTROL_CHAR) {
            result += replacement;
        } else if (hasNoPlace(codePoint) || (isMark && marksLeft == 0)) {
            continue;
        } else {
            result.append(text, at, codePointLength(text, at));
        }
        marksLeft = isMark ? marksLeft - 1 : mostMarks;
    }
    return result;
}

} // namespace tallyview
