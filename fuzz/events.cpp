#include "core/RolloutEvent.h"

#include "fuzz/Check.h"

#include <simdjson.h>

#include <map>
#include <string>

using namespace tallyview;

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

/// What the line decides, by parsing it in full.
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static RolloutEventParser parser;
    const std::string_view line = inputText(data, size);
    // What stands behind the line must not count: it is made to look like its end.
    for (const char padding : {'}', '"', ' '}) {
        std::string padded(line);
        padded.append(RolloutEventParser::padding, padding);
        const auto state = parser.decidedState(std::string_view(padded).substr(0, size));
        check(state == plainlyDecidedState(line), "parsing in full gives the same state");
    }
    return 0;
}
