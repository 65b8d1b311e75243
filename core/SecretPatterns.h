#pragma once

#include <string>

/// The single steps of masking. Each rewrites valid UTF-8 in place, in time linear in its
/// length, and may be called from any thread.
///
/// The steps find exactly what ICU would with the regular expressions above their definitions. ICU
/// itself is not used because its matcher gives up on a value of some hundred thousand characters
/// and takes quadratic time over long runs of blanks.
namespace tallyview {

/// key = value, key: "value" and the like: the value becomes "[REDACTED]".
void maskKeyedValues(std::string &text);
/// Keys that begin with "sk-".
void maskServiceKeys(std::string &text);
/// Signed tokens of three parts that begin with "eyJ".
void maskWebTokens(std::string &text);
/// Mobile numbers of mainland China: the four digits after the third become "****".
void maskPhoneNumbers(std::string &text);

} // namespace tallyview
