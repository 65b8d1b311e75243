#pragma once

#include "core/ThreadVocabulary.h"

#include <optional>
#include <string_view>

namespace tallyview {

/// What RolloutEventParser has to answer for a line, by parsing every line in full.
std::optional<ThreadRunState> plainlyDecidedState(std::string_view line);

} // namespace tallyview
