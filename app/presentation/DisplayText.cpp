#include "app/presentation/DisplayText.h"

#include <QList>

#include <algorithm>

namespace tallyview::DisplayText {

namespace {

constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popDirectionalIsolate(0x2069);

bool runsFromTheLeft(char32_t character) {
    switch (QChar::direction(character)) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return false;
    default:
        return true;
    }
}

bool opensIsolate(QChar character) {
    const QChar::Direction direction = character.direction();
    return direction == QChar::DirLRI || direction == QChar::DirRLI || direction == QChar::DirFSI;
}

} // namespace

QString excerpt(std::string_view text) {
    // A unit takes at most three bytes; the fourth keeps a character cut here out of the result.
    QString result =
        QString::fromUtf8(text.data(), std::min<qsizetype>(std::ssize(text), 4 * longestText));
    result.truncate(longestText);
    if (!result.isEmpty() && result.back().isHighSurrogate()) {
        result.chop(1);
    }
    return result;
}

QString oneLine(std::string_view text) {
    QString line = excerpt(text);
    std::replace_if(
        line.begin(), line.end(), [](QChar character) { return character.isSpace(); }, u' ');
    return line;
}

QString isolated(std::string_view text) {
    const QString line = oneLine(text);
    if (std::ranges::all_of(line.toUcs4(), runsFromTheLeft)) {
        return line;
    }
    QString result(firstStrongIsolate);
    qsizetype open = 0;
    for (const QChar character : line) {
        const bool closes = character == popDirectionalIsolate;
        // One too many would end our own isolate and let the rest out.
        if (!closes || open > 0) {
            open += opensIsolate(character) ? 1 : closes ? -1 : 0;
            result += character;
        }
    }
    return result + QString(open + 1, popDirectionalIsolate);
}

} // namespace tallyview::DisplayText
