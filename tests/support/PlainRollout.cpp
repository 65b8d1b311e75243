#include "tests/support/PlainCore.h"

#include <simdjson.h>
#include <unicode/unistr.h>

#include <map>
#include <vector>

namespace tallyview {

namespace {

using Object = simdjson::dom::object;
using Value = simdjson::dom::element;

/// JSON allows half a surrogate pair, the parser does not: each becomes another character.
std::string withoutSurrogates(std::string_view text) {
    std::string result(text);
    for (std::size_t at = 0; (at = result.find("\\u", at)) != std::string::npos; at += 2) {
        const std::string digits = result.substr(at + 2, 2);
        if (digits.find_first_of("dD") == 0 && digits.find_last_of("89abcdefABCDEF") == 1) {
            result[at + 2] = '0';
        }
    }
    return result;
}

/// Of several members with one name the last counts.
std::optional<Value> member(const Object &object, std::string_view name) {
    std::optional<Value> found;
    for (const auto field : object) {
        found = field.key == name ? std::optional(field.value) : found;
    }
    return found;
}

std::string typeOf(const Object &object) {
    const auto type = member(object, "type");
    return type && type->is_string() ? std::string(type->get_string().value()) : "";
}

bool isStrictUtf8(const std::string &bytes) {
    std::string decoded;
    return icu::UnicodeString::fromUTF8(bytes).toUTF8String(decoded) == bytes;
}

std::vector<std::string> splitLines(const std::string &text) {
    std::vector<std::string> lines{""};
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.compare(at, 2, "\r\n") == 0) {
            lines.back() += "\r\n";
            ++at;
        } else if (text[at] == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += text[at];
        }
    }
    std::erase(lines, "");
    return lines;
}

} // namespace

std::optional<ThreadRunState> plainlyDecidedState(std::string_view line) {
    static const std::map<std::string, ThreadRunState> states{
        {"task_started", ThreadRunState::running},
        {"task_complete", ThreadRunState::completed},
        {"turn_aborted", ThreadRunState::completed}};
    simdjson::dom::parser parser;
    Value event;
    if (line.starts_with("\uFEFF") ||
        parser.allocate(line.size() + 1, line.size() + 1) != simdjson::SUCCESS ||
        parser.parse(withoutSurrogates(line)).get(event) != simdjson::SUCCESS ||
        !event.is_object() || typeOf(event.get_object().value()) != "event_msg") {
        return std::nullopt;
    }
    const auto payload = member(event.get_object().value(), "payload");
    const auto found = payload && payload->is_object()
                           ? states.find(typeOf(payload->get_object().value()))
                           : states.end();
    return found == states.end() ? std::nullopt : std::optional(found->second);
}

ThreadRunState plainlyResolved(const std::string &bytes, std::size_t chunkSize) {
    std::size_t offset = chunkSize == 0 ? 0 : bytes.size();
    std::string carry;
    while (offset > 0) {
        const std::size_t start = offset > chunkSize ? offset - chunkSize : 0;
        const std::string buffer = bytes.substr(start, offset - start) + carry;
        offset = start;
        if (!isStrictUtf8(buffer)) {
            carry = buffer;
            continue;
        }
        std::vector<std::string> lines = splitLines(buffer);
        carry = "";
        if (start > 0 && !lines.empty()) {
            carry = lines.front();
            lines.erase(lines.begin());
        }
        for (; !lines.empty(); lines.pop_back()) {
            if (const auto state = plainlyDecidedState(lines.back())) {
                return *state;
            }
        }
    }
    return ThreadRunState::completed;
}

} // namespace tallyview
