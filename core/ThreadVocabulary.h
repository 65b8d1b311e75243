#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tallyview {

/// Whether a thread's latest task is still at work.
enum class ThreadRunState { running, completed };

/// What the thread list shows by state.
enum class TaskStatusFilter { running, completed, all };

/// What the thread list shows by age; also the names of its time groups.
enum class TaskRecencyFilter { recent, today, week, older };

/// The cases of an enumeration in their fixed order, the order in which they are offered.
template <class Enumeration>
inline constexpr std::array<Enumeration, 0> allCases{};
template <>
inline constexpr std::array allCases<ThreadRunState>{ThreadRunState::running,
                                                     ThreadRunState::completed};
template <>
inline constexpr std::array allCases<TaskStatusFilter>{
    TaskStatusFilter::running, TaskStatusFilter::completed, TaskStatusFilter::all};
template <>
inline constexpr std::array allCases<TaskRecencyFilter>{
    TaskRecencyFilter::recent, TaskRecencyFilter::today, TaskRecencyFilter::week,
    TaskRecencyFilter::older};

/// The stable text of a case: what is persisted, compared and used as its identity.
std::string_view rawValue(ThreadRunState state);
std::string_view rawValue(TaskStatusFilter filter);
std::string_view rawValue(TaskRecencyFilter filter);

/// The text that the user sees.
std::string_view title(ThreadRunState state);
std::string_view title(TaskStatusFilter filter);
std::string_view title(TaskRecencyFilter filter);

/// The case whose raw value is exactly `text` (case-sensitive), or nothing.
template <class Enumeration>
std::optional<Enumeration> fromRawValue(std::string_view text) {
    for (const Enumeration value : allCases<Enumeration>) {
        if (rawValue(value) == text) {
            return value;
        }
    }
    return std::nullopt;
}

} // namespace tallyview
