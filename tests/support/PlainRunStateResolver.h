#pragma once

#include "core/ThreadVocabulary.h"

#include <cstddef>
#include <string>

namespace tallyview {

/// What ThreadRunStateResolver has to answer for a file of these bytes, step by step as
/// docs/formats.md tells it: every piece is decoded with all that is held back behind it. Slow
/// where little decodes or lines are long.
ThreadRunState plainlyResolved(const std::string &bytes, std::size_t chunkSize);

} // namespace tallyview
