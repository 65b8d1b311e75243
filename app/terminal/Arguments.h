#pragma once

#include "core/ThreadVocabulary.h"

#include <QStringList>

#include <chrono>
#include <expected>
#include <limits>
#include <optional>
#include <string>

namespace tallyview {

/// What the command line asks for. The filters bear the model's names; one that is not given is as
/// the window has it.
struct Arguments {
    enum class Command { list, show, open, status, watch, projects, help, version };
    enum class Color { automatic, always, never };
    enum class Format { plain, waybar };

    Command command = Command::list;
    std::string id; ///< of show and open: a thread's, or its beginning
    std::optional<TaskStatusFilter> status;
    std::optional<TaskRecencyFilter> recency;
    std::optional<std::string> project;
    std::string search;
    bool subagents = false;
    bool pinned = false;
    bool oldestFirst = false;
    bool anyTime = false; ///< in place of the filter by time
    std::size_t limit = std::numeric_limits<std::size_t>::max();
    std::chrono::seconds interval{30};
    Format format = Format::plain;
    Color color = Color::automatic;
    bool json = false;

    /// Lifts the filters by state and time that are not given.
    void liftStateAndTime();
};

/// Reads what follows the program's name. The error, one line for people, says what is right.
std::expected<Arguments, QString> readArguments(const QStringList &words);

/// What `--help` answers.
QString helpText();

} // namespace tallyview
