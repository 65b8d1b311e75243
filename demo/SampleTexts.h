#pragma once

#include "demo/SampleRandom.h"

#include <string>

namespace tallyview::demo {

/// English texts are plain ASCII.
enum class SampleLanguage { english, chinese };

/// What a task is called, for example "Fix the CSV importer on slow networks".
std::string sampleTitle(SampleRandom &random, SampleLanguage language);

/// One to four sentences about a task.
std::string samplePreview(SampleRandom &random, SampleLanguage language);

/// About `bytes` bytes of what a tool prints: ASCII lines, each ending in a line feed.
std::string sampleToolOutput(SampleRandom &random, std::size_t bytes);

/// An identifier in the form of a UUID, whose order is that of `unixMilliseconds`.
std::string sampleId(SampleRandom &random, std::int64_t unixMilliseconds);

/// `count` hexadecimal digits.
std::string sampleHex(SampleRandom &random, std::size_t count);

} // namespace tallyview::demo
