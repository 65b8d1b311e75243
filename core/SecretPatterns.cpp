#include "core/SecretPatterns.h"

#include "core/CodePoints.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace tallyview {

namespace {

constexpr std::size_t npos = std::string_view::npos;

constexpr bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

constexpr bool isAsciiDigit(char byte) { return byte >= '0' && byte <= '9'; }

constexpr char asciiLowered(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

constexpr bool isAsciiAlphanumeric(char byte) {
    return isAsciiDigit(byte) || (asciiLowered(byte) >= 'a' && asciiLowered(byte) <= 'z');
}

constexpr bool isTokenByte(char byte) {
    return isAsciiAlphanumeric(byte) || byte == '_' || byte == '-';
}

std::size_t endOfTokenRun(std::string_view text, std::size_t at) {
    const auto rest = text.substr(at);
    return at +
           static_cast<std::size_t>(std::ranges::find_if_not(rest, isTokenByte) - rest.begin());
}

/// A set of bytes with fast lookup.
class ByteSet {
public:
    explicit constexpr ByteSet(std::string_view bytes) {
        for (const char byte : bytes) {
            m_has[static_cast<unsigned char>(byte)] = true;
        }
    }
    constexpr bool contains(char byte) const { return m_has[static_cast<unsigned char>(byte)]; }

private:
    std::array<bool, 256> m_has{};
};

bool isDecimalDigit(UChar32 codePoint) { return u_charType(codePoint) == U_DECIMAL_DIGIT_NUMBER; }

/// Copies a text with some of its ranges replaced; costs nothing when there are none.
class Rewriter {
public:
    explicit Rewriter(std::string &text) : m_text(text) {}

    /// Ranges come in ascending order.
    void replace(std::size_t begin, std::size_t end, std::string_view replacement) {
        m_result.append(m_text, m_copied, begin - m_copied);
        m_result += replacement;
        m_copied = end;
    }

    void finish() {
        if (m_copied > 0) {
            m_result.append(m_text, m_copied);
            m_text = std::move(m_result);
        }
    }

private:
    std::string &m_text;
    std::string m_result;
    std::size_t m_copied = 0;
};

// Keys with values ---------------------------------------------------------------------------

struct KeyWord {
    std::string_view first;
    std::string_view second; ///< when not empty, one of "_-" may stand between the two
};

constexpr std::array keyWords{KeyWord{"authorization", ""}, KeyWord{"picptoken", ""},
                              KeyWord{"api", "key"},        KeyWord{"access", "token"},
                              KeyWord{"refresh", "token"},  KeyWord{"token", ""},
                              KeyWord{"secret", ""},        KeyWord{"password", ""}};

struct Folding {
    std::string_view written;
    std::string_view folded;
};

/// The characters outside ASCII whose full case folding occurs in a key word.
constexpr std::array foldings{Folding{"ſ", "s"}, Folding{"\u212A", "k"}, Folding{"ß", "ss"},
                              Folding{"ẞ", "ss"}};

/// What at the start of `text` matches the start of `literal`, in any letter case.
Folding foldingAt(std::string_view text, std::string_view literal) {
    if (isAscii(text.front())) {
        const bool isSame = asciiLowered(text.front()) == literal.front();
        return isSame ? Folding{text.substr(0, 1), literal.substr(0, 1)} : Folding{};
    }
    const auto *const found = std::ranges::find_if(foldings, [&](const Folding &folding) {
        return text.starts_with(folding.written) && literal.starts_with(folding.folded);
    });
    return found == foldings.end() ? Folding{} : *found;
}

/// Where `literal`, in any letter case, ends if it begins at `at`.
std::size_t afterLiteral(std::string_view text, std::size_t at, std::string_view literal) {
    while (!literal.empty()) {
        const Folding next = at < text.size() ? foldingAt(text.substr(at), literal) : Folding{};
        if (next.written.empty()) {
            return npos;
        }
        at += next.written.size();
        literal.remove_prefix(next.folded.size());
    }
    return at;
}

std::size_t afterKeyWord(std::string_view text, std::size_t at, const KeyWord &keyWord) {
    at = afterLiteral(text, at, keyWord.first);
    if (at == npos || keyWord.second.empty()) {
        return at;
    }
    if (at < text.size() && (text[at] == '_' || text[at] == '-')) {
        ++at;
    }
    return afterLiteral(text, at, keyWord.second);
}

/// At most one key word matches at a place: none is the beginning of another.
std::size_t afterAnyKeyWord(std::string_view text, std::size_t at) {
    for (const KeyWord &keyWord : keyWords) {
        const std::size_t end = afterKeyWord(text, at, keyWord);
        if (end != npos) {
            return end;
        }
    }
    return npos;
}

/// The first bytes of the key words, "ſ" included.
constexpr ByteSet keyWordStarts("aprstAPRST\xC5");
constexpr ByteSet asciiBlanks("\t\n\v\f\r ");
constexpr ByteSet valueEnds("\t\n\v\f\r \"'\\,}");

bool isBlankAt(std::string_view text, std::size_t at) {
    return isAscii(text[at]) ? asciiBlanks.contains(text[at])
                             : u_isUWhiteSpace(codePointAt(text, at)) != 0;
}

bool isValueAt(std::string_view text, std::size_t at) {
    return isAscii(text[at]) ? !valueEnds.contains(text[at]) : !isBlankAt(text, at);
}

std::size_t afterBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && isBlankAt(text, at)) {
        at += codePointLength(text, at);
    }
    return at;
}

std::size_t afterOptionalQuote(std::string_view text, std::size_t at) {
    return at < text.size() && (text[at] == '"' || text[at] == '\'') ? at + 1 : at;
}

std::size_t afterSeparator(std::string_view text, std::size_t at) {
    at = afterBlanks(text, afterOptionalQuote(text, afterBlanks(text, at)));
    if (at == text.size() || (text[at] != ':' && text[at] != '=')) {
        return npos;
    }
    return afterOptionalQuote(text, afterBlanks(text, at + 1));
}

std::size_t afterValue(std::string_view text, std::size_t at) {
    std::size_t count = 0;
    for (; at < text.size() && isValueAt(text, at); at += codePointLength(text, at)) {
        ++count;
    }
    return count >= 8 ? at : npos;
}

struct Range {
    std::size_t begin;
    std::size_t end;
};

/// The value of the key word that begins at `at`.
std::optional<Range> keyedValueAt(std::string_view text, std::size_t at) {
    const std::size_t keyEnd = afterAnyKeyWord(text, at);
    const std::size_t begin = keyEnd == npos ? npos : afterSeparator(text, keyEnd);
    const std::size_t end = begin == npos ? npos : afterValue(text, begin);
    return end == npos ? std::nullopt : std::optional(Range{begin, end});
}

// Web tokens ---------------------------------------------------------------------------------

bool joinsItsPredecessor(UChar32 codePoint) {
    return u_hasBinaryProperty(codePoint, UCHAR_GRAPHEME_EXTEND) != 0 ||
           u_charType(codePoint) == U_FORMAT_CHAR;
}

/// For characters that do not join their predecessor.
bool isWordCharacter(UChar32 codePoint) {
    constexpr auto categories = U_GC_M_MASK | U_GC_ND_MASK | U_GC_PC_MASK;
    return u_isUAlphabetic(codePoint) != 0 || (U_GET_GC_MASK(codePoint) & categories) != 0;
}

bool endsInWord(std::string_view text) {
    for (std::size_t at = text.size(); at > 0;) {
        at = previousCodePoint(text, at);
        const UChar32 codePoint = codePointAt(text, at);
        if (!joinsItsPredecessor(codePoint)) {
            return isWordCharacter(codePoint);
        }
    }
    return false;
}

bool isWordBoundary(std::string_view text, std::size_t at) {
    bool beginsWord = false;
    if (at < text.size()) {
        const UChar32 codePoint = codePointAt(text, at);
        if (joinsItsPredecessor(codePoint)) {
            return false;
        }
        beginsWord = isWordCharacter(codePoint);
    }
    return beginsWord != endsInWord(text.substr(0, at));
}

constexpr std::size_t shortestTokenPart = 8;

/// Where the token part that begins at `at` ends, if a full stop follows it.
std::size_t afterDottedPart(std::string_view text, std::size_t at) {
    const std::size_t end = endOfTokenRun(text, at);
    return end - at >= shortestTokenPart && text.substr(end).starts_with('.') ? end : npos;
}

/// The last part may give back characters until it ends at a word boundary.
std::size_t afterLastPart(std::string_view text, std::size_t at) {
    for (std::size_t end = endOfTokenRun(text, at); end >= at + shortestTokenPart; --end) {
        if (isWordBoundary(text, end)) {
            return end;
        }
    }
    return npos;
}

/// Where the token ends; its characters after "eyJ" begin at `at`.
std::size_t afterWebToken(std::string_view text, std::size_t at) {
    const std::size_t first = afterDottedPart(text, at);
    const std::size_t second = first == npos ? npos : afterDottedPart(text, first + 1);
    return second == npos ? npos : afterLastPart(text, second + 1);
}

// Phone numbers ------------------------------------------------------------------------------

/// Where the run of digits that begins at `at` ends if it has exactly eleven. `places` receives the
/// offset of each.
std::size_t digitPlaces(std::string_view text, std::size_t at,
                        std::array<std::size_t, 12> &places) {
    std::size_t count = 0;
    while (count < places.size() && at < text.size() && isDecimalDigit(codePointAt(text, at))) {
        places[count++] = at;
        at += codePointLength(text, at);
    }
    return count == 11 ? at : npos;
}

bool mayBeginPhoneNumber(std::string_view text, std::size_t at) {
    if (at + 1 >= text.size() || text[at + 1] < '3' || text[at + 1] > '9') {
        return false;
    }
    return at == 0 || !isDecimalDigit(codePointAt(text, previousCodePoint(text, at)));
}

} // namespace

// (?i)(authorization|picptoken|api[_-]?key|access[_-]?token|refresh[_-]?token|token|secret|password)(\s*[\"']?\s*[:=]\s*[\"']?)([^\s\"'\\,}]{8,})
//
// Linear because a key word that fails has looked at no more than three runs of blanks and seven
// characters of value, and the only other key words that look at the same blanks end where it does
// ("token" in "access_token").
void maskKeyedValues(std::string &text) {
    if (!text.contains(':') && !text.contains('=')) {
        return;
    }
    Rewriter rewriter(text);
    for (std::size_t at = 0; at < text.size();) {
        const auto value =
            keyWordStarts.contains(text[at]) ? keyedValueAt(text, at) : std::optional<Range>();
        if (value) {
            rewriter.replace(value->begin, value->end, "[REDACTED]");
        }
        at = value ? value->end : at + 1;
    }
    rewriter.finish();
}

// (?<![A-Za-z0-9])sk-[A-Za-z0-9_-]{12,}
//
// Linear because a key that proves too short has cost a look at fewer than twelve characters.
void maskServiceKeys(std::string &text) {
    constexpr std::size_t prefixLength = 3;
    Rewriter rewriter(text);
    for (std::size_t at = text.find("sk-"); at != npos; at = text.find("sk-", at)) {
        const std::size_t begin = at;
        at += prefixLength;
        if (begin > 0 && isAsciiAlphanumeric(text[begin - 1])) {
            continue;
        }
        const std::size_t end = endOfTokenRun(text, at);
        if (end - at >= 12) {
            rewriter.replace(begin, end, "sk-[REDACTED]");
            at = end;
        }
    }
    rewriter.finish();
}

// \beyJ[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\b
//
// A later "eyJ" in the same run would be followed by a shorter first part and the same other parts,
// so it would fail too. The search goes on after the run, which keeps it linear.
void maskWebTokens(std::string &text) {
    constexpr std::size_t prefixLength = 3;
    Rewriter rewriter(text);
    for (std::size_t at = text.find("eyJ"); at != npos; at = text.find("eyJ", at)) {
        const std::size_t begin = at;
        at += prefixLength;
        if (!isWordBoundary(text, begin)) {
            continue;
        }
        const std::size_t end = afterWebToken(text, at);
        if (end != npos) {
            rewriter.replace(begin, end, "[REDACTED_JWT]");
        }
        at = end != npos ? end : endOfTokenRun(text, at);
    }
    rewriter.finish();
}

// (?<!\d)1[3-9]\d{9}(?!\d)
void maskPhoneNumbers(std::string &text) {
    Rewriter rewriter(text);
    std::array<std::size_t, 12> places{};
    for (std::size_t at = text.find('1'); at != npos; at = text.find('1', at)) {
        const std::size_t begin = at++;
        if (!mayBeginPhoneNumber(text, begin)) {
            continue;
        }
        const std::size_t end = digitPlaces(text, begin, places);
        if (end != npos) {
            rewriter.replace(places[3], places[7], "****");
            at = end;
        }
    }
    rewriter.finish();
}

} // namespace tallyview
