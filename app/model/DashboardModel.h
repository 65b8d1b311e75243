#pragma once

#include "app/model/CalendarCutoffs.h"
#include "app/model/DashboardEnvironment.h"
#include "app/model/ProjectSummary.h"
#include "core/OrvikThreadStore.h"
#include "core/TaskCompletionTracker.h"
#include "core/ThreadTimeGroup.h"
#include "core/UnicodeText.h"

#include <QObject>
#include <QTimer>

#include <future>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <unordered_set>
#include <vector>

namespace tallyview {

using ThreadList = std::vector<ThreadRecord>;
using TextSet = std::unordered_set<std::string, CanonicalHash, CanonicalEqual>;

/// The one object that holds the application's state: the threads last read, the filters, the
/// selection and the pins, and the loop that reads the agent's database every 30 seconds.
///
/// Confined to the main thread. Only the reading of the database leaves it, on a copy of the
/// store; its result is applied on the main thread. Texts are UTF-8 and are compared as
/// canonically equivalent. Derived lists are pure functions of the state and the clock, computed
/// on each access.
class DashboardModel : public QObject {
    Q_OBJECT

public:
    /// Reads the pins. The threads of the agent's database are read later, through `store`.
    DashboardModel(OrvikThreadStore store, DashboardEnvironment environment,
                   QObject *parent = nullptr);
    /// Stops the reading and waits until it has ended.
    ~DashboardModel() override;

    // State. Each assignment emits aboutToChange() once, before the value is stored, whether or
    // not it differs.

    /// In the store's order; the reference holds until the next refresh is applied.
    const ThreadList &threads() const { return *m_threads; }
    /// Counts the lists: while it stays the same, so does threads().
    std::uint64_t threadsRevision() const { return m_threadsRevision; }
    bool isLoading() const { return m_isLoading; }
    /// Why the last refresh failed; none after a successful one.
    const std::optional<std::string> &errorMessage() const { return m_errorMessage; }
    std::optional<Instant> lastSyncedAt() const { return m_lastSyncedAt; }
    TaskStatusFilter statusFilter() const { return m_statusFilter; }
    TaskRecencyFilter recencyFilter() const { return m_recencyFilter; }
    const std::string &query() const { return m_query; } ///< exactly as typed
    const std::optional<std::string> &selectedProject() const { return m_selectedProject; }
    const std::string &source() const { return m_source; } ///< "all" switches the filter off
    bool includeSubagents() const { return m_includeSubagents; }
    bool pinnedOnly() const { return m_pinnedOnly; }
    bool newestFirst() const { return m_newestFirst; }
    const std::optional<std::string> &selectedThreadID() const { return m_selectedThreadID; }
    const TextSet &pinnedIDs() const { return m_pinnedIDs; }

    // A filter that changes reconciles the selection with the visible list.
    void setStatusFilter(TaskStatusFilter filter);
    void setRecencyFilter(TaskRecencyFilter filter);
    void setQuery(std::string query);
    void setSelectedProject(std::optional<std::string> project);
    void setSource(std::string source);
    void setIncludeSubagents(bool include);
    void setPinnedOnly(bool pinnedOnly);
    void setNewestFirst(bool newestFirst);
    void setSelectedThreadID(std::optional<std::string> id);

    // Actions.

    /// Reads all threads in the background and applies them; returns at once. Without effect
    /// while a refresh runs. Ends with refreshFinished().
    void refresh();
    /// Refreshes now and then 30 seconds after the end of each refresh, for as long as the model
    /// lives. Calling it again has no effect.
    Q_INVOKABLE void startMonitoring();
    /// Stops the reading for good and answers whether it has ended within `patience`. It may not
    /// have: nothing wakes a thread that waits for a file system.
    bool stopReading(std::chrono::milliseconds patience);
    void togglePin(const ThreadRecord &thread);
    /// Asks the desktop to open the thread in the agent's own application.
    void open(const ThreadRecord &thread) const;
    /// Selects the project, or none when it is the selected one already.
    void setProject(const std::optional<std::string> &project);
    void clearFilters();
    /// Moves through the visible threads with wrap-around; an offset below minus their number
    /// stops the process.
    void moveSelection(std::int64_t offset);

    // Derived lists and counters.

    ThreadList rootThreads() const;
    std::size_t rootCount() const; ///< of rootThreads()
    ThreadList visibleThreads() const;
    std::vector<ThreadTimeGroup> timeGroups() const;
    std::vector<ProjectCount> projects() const;
    std::vector<ProjectSummary> projectSummaries() const;
    std::size_t count(TaskStatusFilter filter) const;
    std::size_t runningCount() const;
    std::size_t projectCount() const;
    std::size_t archivedCount() const;
    std::size_t todayCount() const;
    bool hasExtraFilters() const;
    bool hasExtraFiltersIgnoringProject() const;
    std::optional<ThreadRecord> selectedThread() const;

    /// The same lists as visibleThreads() and timeGroups(), for one moment, so that one
    /// evaluation of the visible threads serves both.
    ThreadList visibleThreads(const CalendarCutoffs &cutoffs) const;
    /// Of a time other than the filter's; without one, of any time.
    ThreadList visibleThreads(const CalendarCutoffs &cutoffs,
                              std::optional<TaskRecencyFilter> recency) const;
    static std::vector<ThreadTimeGroup> timeGroups(const ThreadList &visible,
                                                   const CalendarCutoffs &cutoffs);

    const DashboardEnvironment &environment() const { return m_environment; }
    CalendarCutoffs currentCutoffs() const;

signals:
    /// A property is about to be assigned.
    void aboutToChange();
    /// A task that ran at the previous refresh has completed.
    void taskCompleted(const tallyview::ThreadRecord &thread);
    /// A refresh has been applied, or has failed.
    void refreshFinished();

private:
    using ReadResult = std::expected<ThreadList, OrvikThreadStoreError>;

    template <class Value>
    void assign(Value &field, Value value);
    template <class Value>
    void assignFilter(Value &field, Value value);
    void applyThreads(ThreadList threads);
    Q_INVOKABLE void finishRefresh();
    void runMonitoringStep();
    void reconcileSelection();
    bool selectionIsVisible(const CalendarCutoffs &cutoffs) const;
    /// Calls `gather` with each thread that counts for its project.
    template <class Gather>
    void forEachGrouped(Gather gather) const;
    /// Whether a thread passes all filters, `recency` in place of the model's; `needle` is the
    /// query as search texts are written.
    bool isVisible(const ThreadRecord &thread, const CalendarCutoffs &cutoffs,
                   std::optional<TaskRecencyFilter> recency, const std::string &needle) const;
    void sortByTime(ThreadList &threads) const;

    OrvikThreadStore m_store;
    DashboardEnvironment m_environment;
    TaskCompletionTracker m_completionTracker;
    QTimer m_monitoringTimer;
    bool m_isMonitoring = false;
    bool m_loopAwaitsRefresh = false;

    std::shared_ptr<const ThreadList> m_threads = std::make_shared<const ThreadList>();
    std::uint64_t m_threadsRevision = 0;
    bool m_isLoading = false;
    std::optional<std::string> m_errorMessage;
    std::optional<Instant> m_lastSyncedAt;
    TaskStatusFilter m_statusFilter = TaskStatusFilter::running;
    TaskRecencyFilter m_recencyFilter = TaskRecencyFilter::today;
    std::string m_query;
    std::optional<std::string> m_selectedProject;
    std::string m_source = "all";
    bool m_includeSubagents = false;
    bool m_pinnedOnly = false;
    bool m_newestFirst = true;
    std::optional<std::string> m_selectedThreadID;
    TextSet m_pinnedIDs;

    std::stop_source m_stop;
    std::future<ReadResult> m_reading; ///< last, to end before anything else is destroyed
};

/// The one rule of every status filter and counter: an archived thread counts as completed.
bool matches(const ThreadRecord &thread, TaskStatusFilter filter);

} // namespace tallyview
