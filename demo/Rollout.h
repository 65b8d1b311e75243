#pragma once

#include "demo/SampleRandom.h"
#include "demo/SampleRow.h"
#include "demo/SampleTexts.h"

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>

namespace tallyview::demo {

/// Composes the events that the agent appends to a thread's rollout file, one JSON object a
/// line, each ending in a line feed.
class Rollout {
public:
    /// The first event happens at `unixMilliseconds`, each further one a little later. With
    /// `SampleLanguage::english` all events are ASCII.
    Rollout(SampleRandom random, SampleLanguage language, std::int64_t unixMilliseconds);

    void describeSession(const SampleRow &row);
    /// The user says what to do, and the task starts.
    void startTask(std::string_view message);
    /// About `bytes` bytes of what happens while a task is at work; some of the texts quote
    /// task events.
    void work(std::size_t bytes);
    void completeTask();
    void abortTask();
    /// The beginning of an event whose rest is still to be written.
    void tear();

    const std::string &text() const { return m_text; }

private:
    void event(std::string_view type, std::string_view payload);
    void think();
    void callTool(std::size_t outputBytes);
    void countTokens();
    void quote();

    SampleRandom m_random;
    SampleLanguage m_language;
    std::int64_t m_now;
    std::int64_t m_tokens = 0;
    std::string m_text;
};

/// How the agent names the rollout file of a thread, below its folder of sessions.
std::filesystem::path rolloutName(std::string_view id, std::int64_t createdMilliseconds);

/// Appends text to a file, making it and its folders when missing, as one write.
std::expected<void, std::string> appendText(const std::filesystem::path &path,
                                            std::string_view text);

/// Appends one event of the type "event_msg" with the given type of payload, for example
/// "task_started", "task_complete" or "turn_aborted".
std::expected<void, std::string> appendEvent(const std::filesystem::path &path,
                                             std::string_view payloadType,
                                             std::int64_t unixMilliseconds = 0);

/// How a rollout file of this agent ends.
struct RolloutTail {
    bool isInsideTask = false; ///< the last task in the final 512 KiB is unfinished
    bool isTorn = false;       ///< the last line is incomplete
};

RolloutTail rolloutTail(const std::filesystem::path &path);

} // namespace tallyview::demo
