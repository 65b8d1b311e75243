#include "app/model/DashboardModel.h"

#include <QCollator>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace tallyview {

bool matches(const ThreadRecord &thread, TaskStatusFilter filter) {
    switch (filter) {
    case TaskStatusFilter::running:
        return thread->runState == ThreadRunState::running && !thread->archived;
    case TaskStatusFilter::completed:
        return thread->runState == ThreadRunState::completed || thread->archived;
    case TaskStatusFilter::all:
        break;
    }
    return true;
}

namespace {

template <class Predicate>
ThreadList filtered(const ThreadList &threads, Predicate keeps) {
    ThreadList kept;
    std::copy_if(threads.begin(), threads.end(), std::back_inserter(kept), keeps);
    return kept;
}

template <class Predicate>
std::size_t countRoots(const ThreadList &threads, Predicate counts) {
    return static_cast<std::size_t>(
        std::count_if(threads.begin(), threads.end(), [&](const ThreadRecord &thread) {
            return !thread->isSubagent && counts(thread);
        }));
}

Instant sortKey(const ThreadRecord &thread) { return thread->updatedAt.value_or(distantPast); }

bool passesRecency(Instant time, TaskRecencyFilter filter, const CalendarCutoffs &cutoffs) {
    switch (filter) {
    case TaskRecencyFilter::recent:
        return time >= cutoffs.recent;
    case TaskRecencyFilter::today:
        return cutoffs.isToday(time);
    case TaskRecencyFilter::week:
        return time >= cutoffs.week;
    case TaskRecencyFilter::older:
        break;
    }
    return time < cutoffs.week;
}

/// Numbers names in order of appearance; canonically equivalent ones get the same number.
class NameNumbers {
public:
    std::size_t numberOf(std::string_view name) {
        Known &known = m_known[placeOf(name)];
        if (known.name.data() == nullptr || known.name != name) {
            known = {name, m_names.try_emplace(name, m_names.size()).first->second};
        }
        return known.number;
    }
    std::size_t size() const { return m_names.size(); }

private:
    struct Known {
        std::string_view name;
        std::size_t number;
    };
    using Place = unsigned char;

    static Place placeOf(std::string_view name) {
        const auto first = static_cast<Place>(name.empty() ? 0 : name.front());
        const auto last = static_cast<Place>(name.empty() ? 0 : name.back());
        return static_cast<Place>(name.size() + 31U * first + 7U * last);
    }

    /// The last names, as threads share few. Equal ones are mostly spelled alike, and that is
    /// quicker to see than equivalence.
    std::array<Known, 256> m_known{};
    std::unordered_map<std::string_view, std::size_t, CanonicalHash, CanonicalEqual> m_names;
};

/// What is gathered about each project, which is named as its first thread spells it.
template <class Project>
class ByProject {
public:
    Project &of(const ThreadRecord &thread) {
        const std::size_t number = m_numbers.numberOf(thread->project);
        if (number == m_projects.size()) {
            m_projects.emplace_back().name = thread->project;
        }
        return m_projects[number];
    }
    std::vector<Project> take() { return std::move(m_projects); }

private:
    NameNumbers m_numbers;
    std::vector<Project> m_projects;
};

/// Sorts by the given figure, largest first, and by name in the user's language where equal.
template <class Project, class Figure>
void sortProjects(std::vector<Project> &projects, const QLocale &locale, Figure figure) {
    const QCollator collator(locale);
    std::stable_sort(projects.begin(), projects.end(),
                     [&](const Project &left, const Project &right) {
                         if (figure(left) != figure(right)) {
                             return figure(left) > figure(right);
                         }
                         return collator.compare(QString::fromStdString(left.name),
                                                 QString::fromStdString(right.name)) < 0;
                     });
}

std::string needle(const std::string &query) { return canonicalForm(lowercased(trimmed(query))); }

} // namespace

CalendarCutoffs DashboardModel::currentCutoffs() const {
    return CalendarCutoffs::at(m_environment.now(), m_environment.utcOffset());
}

ThreadList DashboardModel::rootThreads() const {
    return filtered(threads(), [](const ThreadRecord &thread) { return !thread->isSubagent; });
}

std::size_t DashboardModel::rootCount() const {
    return countRoots(threads(), [](const ThreadRecord &) { return true; });
}

std::size_t DashboardModel::runningCount() const {
    return countRoots(threads(), [](const ThreadRecord &thread) {
        return matches(thread, TaskStatusFilter::running);
    });
}

std::size_t DashboardModel::archivedCount() const {
    return countRoots(threads(), [](const ThreadRecord &thread) { return thread->archived; });
}

std::size_t DashboardModel::todayCount() const {
    const CalendarCutoffs cutoffs = currentCutoffs();
    return countRoots(threads(), [&](const ThreadRecord &thread) {
        return thread->updatedAt && cutoffs.isToday(*thread->updatedAt);
    });
}

std::size_t DashboardModel::projectCount() const {
    NameNumbers names;
    for (const ThreadRecord &thread : threads()) {
        if (!thread->isSubagent) {
            names.numberOf(thread->project);
        }
    }
    return names.size();
}

std::size_t DashboardModel::count(TaskStatusFilter filter) const {
    return countRoots(threads(), [&](const ThreadRecord &thread) {
        return (!m_selectedProject || canonicallyEqual(thread->project, *m_selectedProject)) &&
               matches(thread, filter);
    });
}

ThreadList DashboardModel::visibleThreads() const { return visibleThreads(currentCutoffs()); }

ThreadList DashboardModel::visibleThreads(const CalendarCutoffs &cutoffs) const {
    return visibleThreads(cutoffs, m_recencyFilter);
}

ThreadList DashboardModel::visibleThreads(const CalendarCutoffs &cutoffs,
                                          std::optional<TaskRecencyFilter> recency) const {
    const std::string searched = needle(m_query);
    ThreadList visible = filtered(threads(), [&](const ThreadRecord &thread) {
        return isVisible(thread, cutoffs, recency, searched);
    });
    sortByTime(visible);
    return visible;
}

bool DashboardModel::isVisible(const ThreadRecord &thread, const CalendarCutoffs &cutoffs,
                               std::optional<TaskRecencyFilter> recency,
                               const std::string &needle) const {
    if ((!m_includeSubagents && thread->isSubagent) || !matches(thread, m_statusFilter)) {
        return false;
    }
    if (!thread->updatedAt && recency) {
        // A thread without a time is listed under "older" whatever the other filters say.
        return *recency == TaskRecencyFilter::older;
    }
    return (!recency || passesRecency(*thread->updatedAt, *recency, cutoffs)) &&
           (!m_pinnedOnly || m_pinnedIDs.contains(thread.id())) &&
           (!m_selectedProject || canonicallyEqual(thread->project, *m_selectedProject)) &&
           (m_source == "all" || canonicallyEqual(thread->source, m_source)) &&
           thread.searchText().find(needle) != std::string::npos;
}

bool DashboardModel::selectionIsVisible(const CalendarCutoffs &cutoffs) const {
    const std::optional<ThreadRecord> selected = selectedThread();
    return selected && isVisible(*selected, cutoffs, m_recencyFilter, needle(m_query));
}

/// Newest first or oldest first; equal times keep their order in both directions.
void DashboardModel::sortByTime(ThreadList &threads) const {
    const auto precedes = [this](const ThreadRecord &left, const ThreadRecord &right) {
        return m_newestFirst ? sortKey(left) > sortKey(right) : sortKey(left) < sortKey(right);
    };
    // The store's order is the same but for a few threads, and often for all.
    if (!std::is_sorted(threads.begin(), threads.end(), precedes)) {
        std::stable_sort(threads.begin(), threads.end(), precedes);
    }
}

std::vector<ThreadTimeGroup> DashboardModel::timeGroups() const {
    const CalendarCutoffs cutoffs = currentCutoffs();
    return timeGroups(visibleThreads(cutoffs), cutoffs);
}

std::vector<ThreadTimeGroup> DashboardModel::timeGroups(const ThreadList &visible,
                                                        const CalendarCutoffs &cutoffs) {
    // During the first hour of a day a thread from shortly before midnight is in both "recent" and
    // "week".
    const auto belongs = [&](Instant time, TaskRecencyFilter bucket) {
        switch (bucket) {
        case TaskRecencyFilter::recent:
            return time >= cutoffs.recent;
        case TaskRecencyFilter::today:
            return time < cutoffs.recent && cutoffs.isToday(time);
        case TaskRecencyFilter::week:
            return time < cutoffs.startOfToday && time >= cutoffs.week;
        case TaskRecencyFilter::older:
            break;
        }
        return time < cutoffs.week;
    };
    std::vector<ThreadTimeGroup> groups;
    for (const TaskRecencyFilter bucket : allCases<TaskRecencyFilter>) {
        groups.push_back({std::string(rawValue(bucket)), std::string(title(bucket)), {}});
    }
    for (const ThreadRecord &thread : visible) {
        const Instant time = sortKey(thread);
        for (std::size_t i = 0; i < groups.size(); ++i) {
            if (belongs(time, allCases<TaskRecencyFilter>[i])) {
                groups[i].threads.push_back(thread);
            }
        }
    }
    std::erase_if(groups, [](const ThreadTimeGroup &group) { return group.threads.empty(); });
    return groups;
}

template <class Gather>
void DashboardModel::forEachGrouped(Gather gather) const {
    for (const ThreadRecord &thread : threads()) {
        if (m_includeSubagents || !thread->isSubagent) {
            gather(thread);
        }
    }
}

std::vector<ProjectCount> DashboardModel::projects() const {
    ByProject<ProjectCount> byProject;
    forEachGrouped([&](const ThreadRecord &thread) { ++byProject.of(thread).count; });
    std::vector<ProjectCount> projects = byProject.take();
    sortProjects(projects, m_environment.collationLocale,
                 [](const ProjectCount &project) { return project.count; });
    return projects;
}

std::vector<ProjectSummary> DashboardModel::projectSummaries() const {
    ByProject<ProjectSummary> byProject;
    forEachGrouped([&](const ThreadRecord &thread) {
        ProjectSummary &summary = byProject.of(thread);
        ++summary.count;
        summary.runningCount += matches(thread, TaskStatusFilter::running) ? 1 : 0;
        summary.completedCount += matches(thread, TaskStatusFilter::completed) ? 1 : 0;
        summary.lastUpdated = std::max(summary.lastUpdated, thread->updatedAt);
    });
    std::vector<ProjectSummary> summaries = byProject.take();
    sortProjects(summaries, m_environment.collationLocale, [](const ProjectSummary &summary) {
        return summary.lastUpdated.value_or(distantPast);
    });
    return summaries;
}

bool DashboardModel::hasExtraFilters() const {
    return m_selectedProject || hasExtraFiltersIgnoringProject();
}

bool DashboardModel::hasExtraFiltersIgnoringProject() const {
    return !m_query.empty() || m_source != "all" || m_includeSubagents || m_pinnedOnly ||
           m_statusFilter != TaskStatusFilter::running ||
           m_recencyFilter != TaskRecencyFilter::today;
}

std::optional<ThreadRecord> DashboardModel::selectedThread() const {
    if (!m_selectedThreadID) {
        return std::nullopt;
    }
    const std::size_t position = positionOf(threads(), *m_selectedThreadID);
    return position < threads().size() ? std::optional(threads()[position]) : std::nullopt;
}

} // namespace tallyview
