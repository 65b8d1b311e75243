#pragma once

#include <QString>

#include <string_view>

/// Texts of any length, cut to what a screen can show so that their layout stays cheap. The
/// arguments are UTF-8; lengths are UTF-16 units.
namespace tallyview::DisplayText {

/// More than any screen shows in one line, or any view in its few.
constexpr qsizetype longestText = 2000;

/// The beginning of `text`, its line breaks kept.
QString excerpt(std::string_view text);

/// The beginning of `text` with a blank for each white space, line breaks included.
QString oneLine(std::string_view text);

/// As `oneLine`, for a place beside other texts: right-to-left characters and directional controls
/// in it have no effect on what stands around it.
QString isolated(std::string_view text);

} // namespace tallyview::DisplayText
