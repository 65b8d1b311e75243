#include "app/presentation/DisplayText.h"

#include <algorithm>

namespace tallyview::DisplayText {

QString excerpt(std::string_view text, qsizetype longest) {
    // A unit takes at most three bytes; the rest keeps the cut away from what stays.
    QString result =
        QString::fromUtf8(text.data(), std::min<qsizetype>(std::ssize(text), 4 * longest));
    result.truncate(longest);
    if (!result.isEmpty() && result.back().isHighSurrogate()) {
        result.chop(1);
    }
    return result;
}

QString oneLine(std::string_view text, qsizetype longest) {
    QString line = excerpt(text, longest);
    std::replace_if(
        line.begin(), line.end(), [](QChar character) { return character.isSpace(); }, u' ');
    return line;
}

} // namespace tallyview::DisplayText
