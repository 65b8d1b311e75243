#include "app/terminal/JsonObject.h"

#include "app/terminal/TerminalText.h"
#include "core/CodePoints.h"

namespace tallyview {

namespace {

void appendUnit(std::string &result, unsigned unit) {
    constexpr std::string_view digits = "0123456789abcdef";
    result += "\\u";
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
        result += digits[unit >> shift & 0xFU];
    }
}

/// In UTF-16 units, as JSON has no other escape.
void appendEscaped(std::string &result, unsigned codePoint) {
    if (codePoint < 0x10000) {
        appendUnit(result, codePoint);
    } else {
        appendUnit(result, 0xD7C0U + (codePoint >> 10U));
        appendUnit(result, 0xDC00U + (codePoint & 0x3FFU));
    }
}

/// Most texts are of such characters, which need no look at any table.
bool isPlain(char character) {
    return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    result.reserve(text.size() + 2);
    std::size_t begin = 0; // of what is not yet written
    for (std::size_t at = 0; at < text.size(); at += codePointLength(text, at)) {
        if (isPlain(text[at])) {
            continue;
        }
        const int codePoint = codePointAt(text, at);
        if (codePoint == '"' || codePoint == '\\') {
            result.append(text, begin, at - begin).append({'\\', text[at]});
        } else if (actsOnTerminal(codePoint)) {
            result.append(text, begin, at - begin);
            appendEscaped(result, static_cast<unsigned>(codePoint));
        } else {
            continue;
        }
        begin = at + codePointLength(text, at);
    }
    return result.append(text, begin) + '"';
}

} // namespace

JsonObject &JsonObject::add(std::string_view name, std::string_view text) {
    return addValue(name, quoted(text));
}

JsonObject &JsonObject::add(std::string_view name, std::optional<std::string_view> text) {
    return addValue(name, text ? quoted(*text) : "null");
}

JsonObject &JsonObject::add(std::string_view name, std::int64_t number) {
    return addValue(name, std::to_string(number));
}

JsonObject &JsonObject::add(std::string_view name, bool truth) {
    return addValue(name, truth ? "true" : "false");
}

JsonObject &JsonObject::add(std::string_view name, const JsonObject &object) {
    return addValue(name, object.text());
}

JsonObject &JsonObject::addValue(std::string_view name, std::string_view value) {
    m_members += m_members.empty() ? '{' : ',';
    m_members.append(1, '"').append(name).append("\":").append(value);
    return *this;
}

} // namespace tallyview
