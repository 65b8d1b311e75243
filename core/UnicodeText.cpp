#include "core/UnicodeText.h"

#include "core/CodePoints.h"

#include <simdjson.h>
#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/localpointer.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <span>

namespace tallyview {

namespace {

using Sink = icu::StringByteSink<std::string>;

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

void appendPlainLowered(std::string &result, std::string_view text) {
    const std::size_t size = result.size();
    result += text;
    for (char &byte : std::span(result).subspan(size)) {
        byte = static_cast<char>(byte + (byte >= 'A' && byte <= 'Z' ? 'a' - 'A' : 0));
    }
}

template <class Predicate>
std::string_view trimmedWhere(std::string_view text, Predicate drops) {
    std::size_t begin = 0;
    while (begin < text.size() && drops(codePointAt(text, begin))) {
        begin += codePointLength(text, begin);
    }
    std::size_t end = text.size();
    while (end > begin) {
        const std::size_t last = previousCodePoint(text, end);
        if (!drops(codePointAt(text, last))) {
            break;
        }
        end = last;
    }
    return text.substr(begin, end - begin);
}

// Building the rules is slow, copying an iterator is not.
std::unique_ptr<icu::BreakIterator> makeCharacterIterator() {
    static const std::unique_ptr<const icu::BreakIterator> prototype = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<const icu::BreakIterator>(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }();
    return std::unique_ptr<icu::BreakIterator>(prototype->clone());
}

// Neither of these two returns early, so that the compiler can vectorize them.

bool isAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char byte : text) {
        bits |= static_cast<unsigned char>(byte);
    }
    return bits < 0x80;
}

/// Whether the text is only ASCII and U+4000 to U+9FFF, mostly ideographs. All of these are in
/// normal form, only A to Z have a lower case, and none joins a neighbour except in CR LF.
bool isPlain(std::string_view text) {
    unsigned char others = 0;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        const auto fromFirstHan = static_cast<unsigned char>(value - 0xE4);
        others |= static_cast<unsigned char>((value >= 0xC0) & (fromFirstHan > 5));
    }
    return others == 0;
}

using Visitor = std::function<bool(std::string_view)>;

void visitPlainCharacters(std::string_view text, const Visitor &visit) {
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t length =
            text.substr(begin).starts_with("\r\n") ? 2 : codePointLength(text, begin);
        if (!visit(text.substr(begin, length))) {
            return;
        }
        begin += length;
    }
}

} // namespace

bool isValidUtf8(std::string_view bytes) {
    return simdjson::validate_utf8(bytes.data(), bytes.size());
}

std::string decodedUtf8(std::string_view bytes) {
    if (isValidUtf8(bytes)) {
        return std::string(bytes);
    }
    std::string text;
    icu::UnicodeString::fromUTF8(piece(bytes)).toUTF8String(text);
    return text;
}

std::string_view trimmed(std::string_view text) {
    return trimmedWhere(text, [](UChar32 codePoint) { return u_isUWhiteSpace(codePoint); });
}

std::string_view trimmedBlanks(std::string_view text) {
    return trimmedWhere(text, [](UChar32 codePoint) {
        return codePoint == '\t' || u_charType(codePoint) == U_SPACE_SEPARATOR;
    });
}

std::string lowercased(std::string_view text) {
    std::string result;
    Sink sink(&result, static_cast<std::int32_t>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, piece(text), sink, nullptr, status);
    return result;
}

std::string uppercased(std::string_view text) {
    std::string result;
    Sink sink(&result, static_cast<std::int32_t>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToUpper("", 0, piece(text), sink, nullptr, status);
    return result;
}

void visitCharacters(std::string_view text, const Visitor &visit) {
    if (isPlain(text)) {
        visitPlainCharacters(text, visit);
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUTextPointer source(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
    const auto iterator = makeCharacterIterator();
    iterator->setText(source.getAlias(), status);
    std::size_t begin = 0;
    for (auto at = iterator->next(); at != icu::BreakIterator::DONE; at = iterator->next()) {
        const auto end = static_cast<std::size_t>(at);
        if (!visit(text.substr(begin, end - begin))) {
            return;
        }
        begin = end;
    }
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    visitCharacters(text, [&](std::string_view) { return ++count, true; });
    return count;
}

std::string_view prefixCharacters(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    visitCharacters(text, [&](std::string_view character) {
        if (count == 0) {
            return false;
        }
        --count;
        end += character.size();
        return true;
    });
    return text.substr(0, end);
}

std::string canonicalForm(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const auto *const form = icu::Normalizer2::getNFCInstance(status);
    std::string result;
    Sink sink(&result, static_cast<std::int32_t>(text.size()));
    form->normalizeUTF8(0, piece(text), sink, nullptr, status);
    return result;
}

void appendSearchForm(std::string &result, std::string_view text) {
    if (isPlain(text)) {
        appendPlainLowered(result, text);
    } else {
        result += canonicalForm(lowercased(text));
    }
}

bool canonicallyEqual(std::string_view left, std::string_view right) {
    if (left == right) {
        return true;
    }
    if (isAscii(left) && isAscii(right)) {
        return false;
    }
    return canonicalForm(left) == canonicalForm(right);
}

std::string percentEncodedPath(std::string_view text) {
    constexpr std::string_view unreserved = "-._~!$&'()*+,;=:@/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        const char folded = static_cast<char>(byte | 0x20);
        if ((folded >= 'a' && folded <= 'z') || (byte >= '0' && byte <= '9') ||
            unreserved.contains(byte)) {
            result += byte;
        } else {
            result += {'%', digits[value >> 4U], digits[value & 0xFU]};
        }
    }
    return result;
}

std::size_t CanonicalHash::operator()(std::string_view text) const {
    if (isAscii(text)) {
        return std::hash<std::string_view>()(text);
    }
    return std::hash<std::string_view>()(canonicalForm(text));
}

} // namespace tallyview
