#pragma once

#include <QString>

#include <string>
#include <string_view>

/// The one gate between texts that others wrote and a terminal. The arguments are valid UTF-8.
namespace tallyview {

/// `text` as every terminal shows it in one line, whatever it holds: white space, line breaks
/// included, becomes blanks, and each control U+FFFD. What has no place of its own goes: controls
/// of direction, variation selectors, joiners and the tones of emoji, which terminals count
/// differently, and of the marks above a letter those beyond the fourth.
std::string terminalText(std::string_view text);
inline std::string terminalText(const QString &text) { return terminalText(text.toStdString()); }

/// Whether a code point, sent raw, does anything to a terminal but show itself.
bool actsOnTerminal(int codePoint);

} // namespace tallyview
