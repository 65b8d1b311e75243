#pragma once

#include <QStringList>

#include <expected>
#include <optional>

namespace tallyview {

/// How the process starts.
enum class Start {
    withWindow,
    inBackground ///< watching, without a window until one is asked for
};

/// What `--help` or `--version` is to print on standard output, or nothing if neither is among the
/// arguments. Needs no application, so it works without a display too.
std::optional<QString> commandLineAnswer(const QStringList &arguments);

/// Whether the arguments, Qt's own among them, ask for no window. Needs no application.
bool isInBackground(const QStringList &arguments);

/// Reads the arguments that Qt has left, without the program's name. The error, a text for people:
/// what is not understood, and the usage.
std::expected<Start, QString> readCommandLine(const QStringList &arguments);

} // namespace tallyview
