#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

/// Stateless rules for texts and times that come from the agent's database.
///
/// All texts are valid UTF-8; a character is an extended grapheme cluster. Every function may
/// be called from any thread and takes time linear in the length of its text.
namespace tallyview::TextSanitizer {

/// The text with secrets and mobile phone numbers masked.
std::string redact(std::string_view text);
/// The same where the text stands; a text without any is only looked at.
void redactInPlace(std::string &text);

/// A short name for a working directory; never empty. The user's home directory is "Home".
std::string projectName(std::string_view path);

/// The same for a given home directory (an absolute path without a trailing slash).
std::string projectName(std::string_view path, std::string_view homeDirectory);

/// The upper-case badge code of a project: two or three letters as a rule, empty for an empty
/// name.
std::string projectCode(std::string_view name);

/// The first positive value in Unix milliseconds, or 0 when there is none. A value below
/// 1,000,000,000,000 is in seconds.
std::int64_t normalizedMilliseconds(std::initializer_list<std::int64_t> values);

} // namespace tallyview::TextSanitizer
