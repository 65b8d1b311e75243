#include "core/RolloutEvent.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tallyview {
namespace {

char decided(std::string line) {
    static RolloutEventParser parser;
    const std::size_t size = line.size();
    line.append(RolloutEventParser::padding, '}');
    const auto state = parser.decidedState(std::string_view(line).substr(0, size));
    return !state ? '-' : *state == ThreadRunState::running ? 'r' : 'c';
}

std::string nested(std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(RolloutEventParser, readsDecidingEventsOnly) {
    const std::string begin = R"({"type":"event_msg","payload":{"type":"task_started")";
    const std::string started = begin + "}}";
    const std::vector<std::pair<std::string, char>> cases{
        {" \t\r" + started + "\r\n ", 'r'},
        {R"({"type":"event_msg","payload":{"type":"turn_aborted"}})", 'c'},
        {R"({"payload":{"id":[1,{}],"type":"task_started","n":null},"x":-1.5e3,"type":"event_msg"})",
         'r'},
        {R"({"type":"x","type":"event_msg","payload":{},"payload":{"type":1,"type":"task_started"}})",
         'r'},
        {begin + R"(,"type":null}})", '-'},
        {begin + R"(},"payload":[]})", '-'},
        {begin + R"(,"deep":)" + nested(50'000) + "}}", 'r'},
        {begin + R"(,"s":"\ud83d"},"deep":)" + nested(1100) + "}", 'r'},
        {begin + R"(,"s":"\udE00\ud83d\ude00\\ud83d"}})", 'r'},
        {begin + R"(,"s":"\q\ud83d"}})", '-'},
        {R"({"type":"Event_msg","payload":{"type":"task_started"}})", '-'},
        {R"({"type":"event_msg","payload":{"type":["task_started"]}})", '-'},
        {R"({"type":["event_msg"],"payload":{"type":"task_started"}})", '-'},
        {R"({"type":"event_msg","payload":"task_started"})", '-'},
        {R"({"payload":{"type":"task_started"}})", '-'},
        {"[" + started + "]", '-'},
        {started + " 1", '-'},
        {begin + "}", '-'},
        {"\uFEFF" + started, '-'},
        {started + std::string(1, '\0'), '-'},
        {begin + ",\"s\":\"\t\"}}", '-'},
        {"\r", '-'},
    };
    for (const auto &[line, state] : cases) {
        EXPECT_EQ(decided(line), state) << line.substr(0, 200);
    }
}

TEST(RolloutEventParser, overlooksNoTypeWhereverItStandsAndHoweverItIsWritten) {
    const std::vector<std::pair<std::string, char>> types{
        {"task_started", 'r'},         {R"(\u0074ask_started)", 'r'}, {R"(t\u0061sk_started)", 'r'},
        {R"(ta\u0073k_started)", 'r'}, {R"(task\u005Fstarted)", 'r'}, {R"(tur\u006e_aborted)", 'c'},
        {"task_complete", 'c'},        {R"(\\u0074ask_started)", '-'}};
    for (const auto &[type, state] : types) {
        for (std::size_t length = 0; length < 300; ++length) {
            const std::string event = R"({"n":")" + std::string(length, 'x') +
                                      R"(","type":"event_msg","payload":{"type":")" + type +
                                      R"("},"o":")";
            const std::string after(299 - length, 'x');
            ASSERT_EQ(decided(event + after + "\"}"), state) << type << ' ' << length;
            ASSERT_EQ(decided(event + "\"}"), state) << type << ' ' << length;
        }
    }
}

} // namespace
} // namespace tallyview
