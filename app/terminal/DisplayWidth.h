#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Texts measured in the columns of a terminal. They come from terminalText(), so that terminals
/// agree on them.
namespace tallyview {

/// 2 for Han, Kana, Hangul, full-width forms and emoji, 0 for marks on the character before,
/// else 1.
int columnsOf(int codePoint);

std::size_t displayWidth(std::string_view text);

/// The longest beginning that takes at most `columns`; a view into `text`.
std::string_view fittingPrefix(std::string_view text, std::size_t columns);

/// `text`, or as much of it as fits with "…" in its end.
std::string cutTo(std::string_view text, std::size_t columns);

/// `text` with blanks up to `columns`; a longer one stays.
std::string paddedTo(std::string text, std::size_t columns);

/// `text` in lines of at most `columns`, a character that is wider alone in its line; one line at
/// least. Views into `text`.
std::vector<std::string_view> wrappedAt(std::string_view text, std::size_t columns);

} // namespace tallyview
