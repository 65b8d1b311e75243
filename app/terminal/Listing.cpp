#include "app/terminal/Listing.h"

namespace tallyview {

ThreadRunState stateOf(const ThreadRecord &thread) {
    return matches(thread, TaskStatusFilter::running) ? ThreadRunState::running
                                                      : ThreadRunState::completed;
}

void applyFilters(DashboardModel &model, const Arguments &arguments) {
    if (arguments.status) {
        model.setStatusFilter(*arguments.status);
    }
    if (arguments.recency) {
        model.setRecencyFilter(*arguments.recency);
    }
    model.setSelectedProject(arguments.project);
    model.setQuery(arguments.search);
    model.setIncludeSubagents(arguments.subagents);
    model.setPinnedOnly(arguments.pinned);
    model.setNewestFirst(!arguments.oldestFirst);
}

std::optional<TaskRecencyFilter> recencyOf(const DashboardModel &model,
                                           const Arguments &arguments) {
    return arguments.anyTime ? std::nullopt : std::optional(model.recencyFilter());
}

Listing listingOf(const DashboardModel &model, const Arguments &arguments) {
    const CalendarCutoffs cutoffs = model.currentCutoffs();
    return {.groups = DashboardModel::timeGroups(
                model.visibleThreads(cutoffs, recencyOf(model, arguments)), cutoffs),
            .evaluatedAt = cutoffs.now};
}

} // namespace tallyview
