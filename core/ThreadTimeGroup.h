#pragma once

#include "core/ThreadRecord.h"

#include <string>
#include <vector>

namespace tallyview {

/// The threads of one time bucket, in display order.
struct ThreadTimeGroup {
    std::string id;    ///< stable within one list
    std::string title; ///< heading shown above the group
    std::vector<ThreadRecord> threads;
};

} // namespace tallyview
