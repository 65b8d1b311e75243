#pragma once

#include "core/ThreadVocabulary.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tallyview {

// What the core has to answer, worked out the plain and slow way.

/// ThreadRunStateResolver for a file of these bytes, step by step as docs/formats.md tells it:
/// every piece is decoded with all that is held back behind it.
ThreadRunState plainlyResolved(const std::string &bytes, std::size_t chunkSize);

/// TextSanitizer::redact by ICU's matcher, its stack not limited. To be used from one thread.
std::string plainlyRedacted(std::string_view text);

} // namespace tallyview
