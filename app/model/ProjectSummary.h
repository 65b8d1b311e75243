#pragma once

#include "core/ThreadRecord.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tallyview {

/// The figures of one project; its identity in lists is `name`.
struct ProjectSummary {
    std::string name;
    std::size_t count = 0;
    std::size_t runningCount = 0;
    std::size_t completedCount = 0;
    std::optional<Instant> lastUpdated; ///< latest known activity of its threads
};

/// One line of the project navigation.
struct ProjectCount {
    std::string name;
    std::size_t count = 0;
};

} // namespace tallyview
