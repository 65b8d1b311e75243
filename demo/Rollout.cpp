#include "demo/Rollout.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>

namespace tallyview::demo {
namespace {

using namespace std::string_view_literals;

constexpr std::array reasons{
    "Looking at the tests first to see what is covered."sv,
    "The failure only happens when the queue is empty."sv,
    "I will keep the signature and move the check down."sv,
    "Running the suite again with the fix in place."sv,
};

constexpr std::array commands{
    R"(rg -n "retry" src)"sv, R"(sed -n '1,120p' src/reader.cpp)"sv, R"(make -j4 test)"sv,
    R"(git diff --stat)"sv,   R"(python3 -m pytest -q tests)"sv,     R"(npm run build)"sv,
};

/// Events that only look as if they started or ended a task.
constexpr std::array decoys{
    R"({"type":"message","role":"assistant","content":"{\"type\":\"event_msg\",\"payload\":{\"type\":\"task_complete\"}}"})"sv,
    R"({"type":"message","role":"user","content":"grep '\"payload\":{\"type\":\"task_started\"' rollout.jsonl"})"sv,
    R"({"type":"task_started","note":"of a response item, not of an event"})"sv,
    R"({"type":"turn_aborted","note":"of a response item, not of an event"})"sv,
};

constexpr std::string_view taskEvent = R"("type":"event_msg","payload":{"type":")";

struct CivilTime {
    int year, hour, minute, second, millisecond;
    unsigned month, day;
};

CivilTime civilTime(std::int64_t unixMilliseconds) {
    using namespace std::chrono;
    const sys_time<milliseconds> time{milliseconds(unixMilliseconds)};
    const auto midnight = floor<days>(time);
    const year_month_day date(midnight);
    const hh_mm_ss clock(time - midnight);
    return {.year = static_cast<int>(date.year()),
            .hour = static_cast<int>(clock.hours().count()),
            .minute = static_cast<int>(clock.minutes().count()),
            .second = static_cast<int>(clock.seconds().count()),
            .millisecond = static_cast<int>(clock.subseconds().count()),
            .month = static_cast<unsigned>(date.month()),
            .day = static_cast<unsigned>(date.day())};
}

/// The time as the agent writes it into an event.
std::string timestamp(std::int64_t unixMilliseconds) {
    const CivilTime time = civilTime(unixMilliseconds);
    std::array<char, 96> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", time.year,
                  time.month, time.day, time.hour, time.minute, time.second, time.millisecond);
    return buffer.data();
}

std::string jsonText(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += {'\\', c};
        } else if (c == '\n') {
            result += "\\n";
        } else if (static_cast<unsigned char>(c) < 0x20) {
            result += ' ';
        } else {
            result += c;
        }
    }
    return result + "\"";
}

std::string eventLine(std::int64_t now, std::string_view type, std::string_view payload) {
    std::string line = "{\"timestamp\":\"" + timestamp(now) + "\",\"type\":\"";
    line += type;
    line += "\",\"payload\":";
    line += payload;
    return line + "}\n";
}

std::string typed(std::string_view type, const std::string &members = {}) {
    std::string payload = "{\"type\":\"";
    payload += type;
    return payload + "\"" + members + "}";
}

std::string member(std::string_view name, std::string_view text) {
    return ",\"" + std::string(name) + "\":" + jsonText(text);
}

std::string member(std::string_view name, std::int64_t value) {
    return ",\"" + std::string(name) + "\":" + std::to_string(value);
}

} // namespace

Rollout::Rollout(SampleRandom random, SampleLanguage language, std::int64_t unixMilliseconds)
    : m_random(random)
    , m_language(language)
    , m_now(unixMilliseconds) {}

void Rollout::event(std::string_view type, std::string_view payload) {
    m_text += eventLine(m_now, type, payload);
    m_now += m_random.skewed(20, 20'000);
}

void Rollout::describeSession(const SampleRow &row) {
    const auto named = [&](const std::optional<std::string> &text) {
        return m_language == SampleLanguage::english ? "" : text.value_or("");
    };
    event("session_meta",
          "{\"id\":" + jsonText(row.id.value_or("")) + member("cwd", named(row.cwd)) +
              member("branch", named(row.gitBranch)) +
              member("cli_version", row.cliVersion.value_or("")) +
              member("instructions", "Follow the conventions of the project.") + "}");
    event("turn_context", "{\"model\":" + jsonText(row.model.value_or("")) +
                              member("approval_mode", row.approvalMode.value_or("")) + "}");
}

void Rollout::startTask(std::string_view message) {
    event("response_item", typed("message", member("role", "user") + member("content", message)));
    event("event_msg", typed("user_message", member("message", message)));
    event("event_msg", typed("task_started", member("context_window", 256'000)));
}

void Rollout::completeTask() {
    countTokens();
    event("event_msg",
          typed("task_complete", member("last_message", samplePreview(m_random, m_language))));
}

void Rollout::abortTask() { event("event_msg", typed("turn_aborted", member("reason", "user"))); }

void Rollout::think() {
    event("event_msg", typed("agent_reasoning", member("text", m_random.pick(std::span(reasons)))));
    event("event_msg",
          typed("agent_message", member("message", samplePreview(m_random, m_language))));
}

void Rollout::callTool(std::size_t outputBytes) {
    const std::string call = member("call_id", "call_" + sampleHex(m_random, 16));
    const std::string command(m_random.pick(std::span(commands)));
    event("response_item",
          typed("function_call", member("name", "shell") + call + member("arguments", command)));
    event("event_msg", typed("exec_command_begin", call + member("command", command)));
    const std::string output = sampleToolOutput(m_random, outputBytes);
    event("event_msg", typed("exec_command_end", call + member("exit_code", 0)));
    event("response_item", typed("function_call_output", call + member("output", output)));
}

void Rollout::countTokens() {
    m_tokens += m_random.skewed(200, 40'000);
    event("event_msg",
          typed("token_count", member("total", m_tokens) + member("cached", m_tokens / 3)));
}

void Rollout::quote() { event("response_item", m_random.pick(std::span(decoys))); }

void Rollout::work(std::size_t bytes) {
    const std::size_t target = m_text.size() + bytes;
    while (m_text.size() < target) {
        const std::size_t rest = target - m_text.size();
        const auto most = static_cast<std::int64_t>(std::clamp<std::size_t>(rest / 2, 200, 24'000));
        switch (m_random.below(12)) {
        case 0:
            quote();
            break;
        case 1:
        case 2:
        case 3:
            think();
            break;
        case 4:
        case 5:
            countTokens();
            break;
        default:
            callTool(static_cast<std::size_t>(m_random.skewed(100, most)));
        }
    }
}

void Rollout::tear() {
    const std::string line = eventLine(m_now, "event_msg", typed("task_complete"));
    m_text += line.substr(0, line.size() - 12);
}

std::filesystem::path rolloutName(std::string_view id, std::int64_t createdMilliseconds) {
    const CivilTime time = civilTime(createdMilliseconds);
    std::array<char, 160> buffer{};
    std::snprintf(buffer.data(), buffer.size(),
                  "%04d/%02u/%02u/rollout-%04d-%02u-%02uT%02d-%02d-%02d-", time.year, time.month,
                  time.day, time.year, time.month, time.day, time.hour, time.minute, time.second);
    return std::string(buffer.data()).append(id) + ".jsonl";
}

std::expected<void, std::string> appendText(const std::filesystem::path &path,
                                            std::string_view text) {
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::ofstream file(path, std::ios::binary | std::ios::app);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) {
        return std::unexpected("cannot write " + path.string());
    }
    return {};
}

std::expected<void, std::string> appendEvent(const std::filesystem::path &path,
                                             std::string_view payloadType,
                                             std::int64_t unixMilliseconds) {
    return appendText(path, eventLine(unixMilliseconds, "event_msg", typed(payloadType)));
}

RolloutTail rolloutTail(const std::filesystem::path &path) {
    constexpr std::streamoff tail = 524'288;
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.tellg();
    file.seekg(std::max<std::streamoff>(0, size - tail));
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const auto lastEvent = [&](const char *type) {
        const std::size_t position = text.rfind(std::string(taskEvent) + type);
        return position == std::string::npos ? 0 : position + 1;
    };
    const std::size_t end = std::max(lastEvent("task_complete"), lastEvent("turn_aborted"));
    return {.isInsideTask = lastEvent("task_started") > end,
            .isTorn = !text.empty() && text.back() != '\n'};
}

} // namespace tallyview::demo
