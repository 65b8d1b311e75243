#include "core/RolloutEvent.h"

#include <simdjson.h>

#include <algorithm>
#include <cstdint>
#include <string>

namespace tallyview {

static_assert(RolloutEventParser::padding >= simdjson::SIMDJSON_PADDING);

class RolloutEventParser::Parser : public simdjson::dom::parser {};

namespace {

using JsonParser = simdjson::dom::parser;
using Value = simdjson::dom::element;
using Outcome = simdjson::simdjson_result<Value>;

Outcome parsedInPlace(JsonParser &parser, std::string_view paddedText) {
    const auto *const bytes = reinterpret_cast<const std::uint8_t *>(paddedText.data());
    return parser.parse(bytes, paddedText.size(), false);
}

std::size_t greatestDepth(std::string_view text) {
    const auto opens = [](char byte) { return byte == '{' || byte == '['; };
    return 1 + static_cast<std::size_t>(std::ranges::count_if(text, opens));
}

/// JSON allows a lone surrogate, the parser does not: \uD800 to \uDFFF become other characters.
/// That changes no answer, as no text that decides anything contains either.
std::string withoutSurrogates(std::string_view text) {
    constexpr std::string_view prefix = "\\u";
    std::string result(text);
    for (std::size_t at = result.find(prefix); at != std::string::npos;
         at = result.find(prefix, at)) {
        at += prefix.size();
        const std::string_view digits = std::string_view(result).substr(at, 2);
        if (digits.size() == 2 && (digits[0] == 'd' || digits[0] == 'D') &&
            std::string_view("89abcdefABCDEF").contains(digits[1])) {
            result[at] = '0';
        }
    }
    return result;
}

Outcome parsedAtAnyDepth(JsonParser &parser, std::string_view paddedText) {
    const Outcome outcome = parsedInPlace(parser, paddedText);
    if (outcome.error() != simdjson::DEPTH_ERROR) {
        return outcome;
    }
    if (parser.allocate(paddedText.size(), greatestDepth(paddedText)) != simdjson::SUCCESS) {
        return simdjson::MEMALLOC;
    }
    return parsedInPlace(parser, paddedText);
}

Outcome parsedWithoutSurrogates(JsonParser &parser, std::string_view text) {
    std::string padded = withoutSurrogates(text);
    padded.append(RolloutEventParser::padding, ' ');
    return parsedAtAnyDepth(parser, std::string_view(padded).substr(0, text.size()));
}

/// Neither deep nesting nor a lone surrogate makes a JSON value unreadable.
Outcome parsed(JsonParser &parser, std::string_view paddedLine) {
    const Outcome outcome = parsedAtAnyDepth(parser, paddedLine);
    return outcome.error() == simdjson::STRING_ERROR ? parsedWithoutSurrogates(parser, paddedLine)
                                                     : outcome;
}

/// The member `name` of an object; if there are several, the last one.
std::optional<Value> member(const Value &value, std::string_view name) {
    simdjson::dom::object object;
    std::optional<Value> found;
    if (value.get(object) == simdjson::SUCCESS) {
        for (const auto field : object) {
            if (field.key == name) {
                found = field.value;
            }
        }
    }
    return found;
}

std::string_view text(const std::optional<Value> &value) {
    std::string_view result;
    if (value && value->get(result) != simdjson::SUCCESS) {
        result = {};
    }
    return result;
}

std::optional<ThreadRunState> decidedState(const Value &event) {
    if (text(member(event, "type")) != "event_msg") {
        return std::nullopt;
    }
    const std::optional<Value> payload = member(event, "payload");
    const std::string_view type = payload ? text(member(*payload, "type")) : std::string_view();
    if (type == "task_started") {
        return ThreadRunState::running;
    }
    if (type == "task_complete" || type == "turn_aborted") {
        return ThreadRunState::completed;
    }
    return std::nullopt;
}

/// 0 when the bytes from `at` on could begin the name of a deciding type, or the escape of a
/// letter. Works on bytes and does not branch, so that the compiler can vectorize it.
unsigned char distanceFromTrace(const char *at) {
    const auto name = (at[0] ^ '"') | (at[1] ^ 't') | (at[5] ^ '_');
    const auto escape = (at[0] ^ '\\') | (at[1] ^ 'u') | (at[2] ^ '0') | ((at[4] & 0xFC) ^ '4');
    return std::min(static_cast<unsigned char>(name), static_cast<unsigned char>(escape));
}

template <std::size_t count>
bool hasTrace(const char *at) {
    unsigned char least = 0xFF;
    for (std::size_t index = 0; index < count; ++index) {
        least = std::min(least, distanceFromTrace(at + index));
    }
    return least == 0;
}

/// A look without parsing; false only for lines that decide nothing. The names of deciding types
/// are letters and underscores, so unless one of these is escaped, a name appears in the line as it
/// is, quotes included.
bool mayDecide(std::string_view line) {
    constexpr std::size_t traceLength = 6;
    constexpr std::size_t block = 64;
    constexpr std::size_t window = block + traceLength - 1;
    if (line.size() >= window) {
        const char *const last = line.data() + line.size() - window;
        for (const char *at = line.data(); at < last; at += block) {
            if (hasTrace<block>(at)) {
                return true;
            }
        }
        return hasTrace<block>(last);
    }
    for (; line.size() >= traceLength; line.remove_prefix(1)) {
        if (hasTrace<1>(line.data())) {
            return true;
        }
    }
    return false;
}

} // namespace

RolloutEventParser::RolloutEventParser() = default;
RolloutEventParser::~RolloutEventParser() = default;

std::optional<ThreadRunState> RolloutEventParser::decidedState(std::string_view line) {
    if (!mayDecide(line)) {
        return std::nullopt;
    }
    if (!m_parser) {
        m_parser = std::make_unique<Parser>();
    }
    Value value;
    // Some versions of the parser skip a byte order mark, which is no part of JSON.
    if (line.starts_with("\uFEFF") || parsed(*m_parser, line).get(value) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    return tallyview::decidedState(value);
}

} // namespace tallyview
