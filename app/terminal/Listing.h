#pragma once

#include "app/model/DashboardModel.h"
#include "app/terminal/Arguments.h"

#include <vector>

namespace tallyview {

/// The visible threads in their time groups at one moment: what the thread index would show.
struct Listing {
    std::vector<ThreadTimeGroup> groups;
    Instant evaluatedAt;
};

/// As which a thread counts: an archived one as completed.
ThreadRunState stateOf(const ThreadRecord &thread);

/// Hands the filters that `arguments` name to the model; the others stay.
void applyFilters(DashboardModel &model, const Arguments &arguments);

/// The time that `arguments` ask for; none for any.
std::optional<TaskRecencyFilter> recencyOf(const DashboardModel &model, const Arguments &arguments);

Listing listingOf(const DashboardModel &model, const Arguments &arguments);

} // namespace tallyview
