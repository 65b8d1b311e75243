#include "app/model/DashboardModel.h"

#include "app/model/ThreadLink.h"
#include "app/platform/UrlOpener.h"
#include "app/platform/UserDefaults.h"
#include "core/Precondition.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tallyview {

namespace {

const QString pinnedKey = QStringLiteral("pinnedThreadIDs");

template <class Value>
bool same(const Value &left, const Value &right) {
    return left == right;
}
bool same(const std::string &left, const std::string &right) {
    return canonicallyEqual(left, right);
}
bool same(const std::optional<std::string> &left, const std::optional<std::string> &right) {
    return left && right ? canonicallyEqual(*left, *right) : left == right;
}

TextSet storedPins(const UserDefaults &defaults) {
    TextSet pins;
    for (const QString &id : defaults.stringList(pinnedKey).value_or(QStringList())) {
        pins.insert(id.toStdString());
    }
    return pins;
}

} // namespace

DashboardModel::DashboardModel(OrvikThreadStore store, DashboardEnvironment environment,
                               QObject *parent)
    : QObject(parent)
    , m_store(std::move(store))
    , m_environment(std::move(environment))
    , m_pinnedIDs(storedPins(m_environment.defaults)) {
    m_monitoringTimer.setSingleShot(true);
    m_monitoringTimer.setTimerType(Qt::PreciseTimer);
    m_monitoringTimer.setInterval(m_environment.refreshInterval);
    connect(&m_monitoringTimer, &QTimer::timeout, this, &DashboardModel::runMonitoringStep);
}

DashboardModel::~DashboardModel() { m_stop.request_stop(); }

template <class Value>
void DashboardModel::assign(Value &field, Value value) {
    emit aboutToChange();
    field = std::move(value);
}

template <class Value>
void DashboardModel::assignFilter(Value &field, Value value) {
    const bool differs = !same(field, value);
    assign(field, std::move(value));
    if (differs) {
        reconcileSelection();
    }
}

void DashboardModel::setStatusFilter(TaskStatusFilter filter) {
    assignFilter(m_statusFilter, filter);
}

void DashboardModel::setRecencyFilter(TaskRecencyFilter filter) {
    assignFilter(m_recencyFilter, filter);
}

void DashboardModel::setQuery(std::string query) { assignFilter(m_query, std::move(query)); }

void DashboardModel::setSelectedProject(std::optional<std::string> project) {
    assignFilter(m_selectedProject, std::move(project));
}

void DashboardModel::setSource(std::string source) { assignFilter(m_source, std::move(source)); }

void DashboardModel::setIncludeSubagents(bool include) {
    assignFilter(m_includeSubagents, include);
}

void DashboardModel::setPinnedOnly(bool pinnedOnly) { assignFilter(m_pinnedOnly, pinnedOnly); }

void DashboardModel::setNewestFirst(bool newestFirst) { assign(m_newestFirst, newestFirst); }

void DashboardModel::setSelectedThreadID(std::optional<std::string> id) {
    assign(m_selectedThreadID, std::move(id));
}

void DashboardModel::refresh() {
    if (m_isLoading) {
        return;
    }
    assign(m_isLoading, true);
    // By name, so that only Qt touches the call on both threads.
    const auto finish = [this] {
        QMetaObject::invokeMethod(this, "finishRefresh", Qt::QueuedConnection);
    };
    const auto read = [finish, store = m_store, known = m_threads, stop = m_stop.get_token()] {
        ReadResult result = store.listThreads(*known, stop);
        finish();
        return result;
    };
    try {
        m_reading = std::async(std::launch::async, read);
    } catch (const std::system_error &error) {
        m_reading = std::async(std::launch::deferred, [text = std::string(error.what())] {
            return ReadResult(std::unexpected(
                OrvikThreadStoreError(OrvikThreadStoreError::Kind::queryFailed, text)));
        });
        finish();
    }
}

bool DashboardModel::stopReading(std::chrono::milliseconds patience) {
    m_stop.request_stop();
    return !m_reading.valid() || m_reading.wait_for(patience) != std::future_status::timeout;
}

void DashboardModel::finishRefresh() {
    ReadResult result = m_reading.get();
    if (result) {
        applyThreads(*std::move(result));
    } else {
        assign(m_errorMessage, std::optional(result.error().description()));
    }
    assign(m_isLoading, false);
    if (std::exchange(m_loopAwaitsRefresh, false)) {
        m_monitoringTimer.start();
    }
    emit refreshFinished();
}

void DashboardModel::applyThreads(ThreadList threads) {
    const ThreadList completed = m_completionTracker.completedThreads(threads);
    assign(m_threads, std::make_shared<const ThreadList>(std::move(threads)));
    ++m_threadsRevision;
    assign(m_errorMessage, std::optional<std::string>());
    assign(m_lastSyncedAt, std::optional(m_environment.now()));
    reconcileSelection();
    for (const ThreadRecord &thread : completed) {
        emit taskCompleted(thread);
    }
}

void DashboardModel::startMonitoring() {
    if (!std::exchange(m_isMonitoring, true)) {
        runMonitoringStep();
    }
}

void DashboardModel::runMonitoringStep() {
    if (m_isLoading) {
        // Does not wait for a refresh that somebody else started.
        m_monitoringTimer.start();
        return;
    }
    m_loopAwaitsRefresh = true;
    refresh();
}

void DashboardModel::togglePin(const ThreadRecord &thread) {
    TextSet pins = m_pinnedIDs;
    if (const std::string id(thread.id()); pins.erase(id) == 0) {
        pins.insert(id);
    }
    assign(m_pinnedIDs, std::move(pins));
    QStringList stored;
    for (const std::string &id : m_pinnedIDs) {
        stored.append(QString::fromStdString(id));
    }
    m_environment.defaults.setValue(pinnedKey, stored);
    if (m_pinnedOnly) {
        reconcileSelection();
    }
}

void DashboardModel::open(const ThreadRecord &thread) const {
    m_environment.urlOpener.open(threadLink(thread.id()), QString());
}

void DashboardModel::setProject(const std::optional<std::string> &project) {
    setSelectedProject(same(m_selectedProject, project) ? std::nullopt : project);
}

void DashboardModel::clearFilters() {
    setQuery({});
    setSelectedProject(std::nullopt);
    setSource("all");
    setIncludeSubagents(false);
    setPinnedOnly(false);
    setStatusFilter(TaskStatusFilter::running);
    setRecencyFilter(TaskRecencyFilter::today);
}

namespace {

/// The size of the list if no thread is selected.
std::size_t position(const ThreadList &threads, const std::optional<std::string> &id) {
    return id ? positionOf(threads, *id) : threads.size();
}

} // namespace

void DashboardModel::moveSelection(std::int64_t offset) {
    const ThreadList visible = visibleThreads();
    if (visible.empty()) {
        return;
    }
    const auto size = static_cast<std::int64_t>(visible.size());
    if (offset < -size) {
        preconditionFailure("The selection moved by more than the number of visible threads");
    }
    const auto found = static_cast<std::int64_t>(position(visible, m_selectedThreadID));
    const std::int64_t start = found == size ? 0 : found;
    const std::int64_t target = (start + offset % size + size) % size;
    setSelectedThreadID(std::string(visible[static_cast<std::size_t>(target)].id()));
}

void DashboardModel::reconcileSelection() {
    const CalendarCutoffs cutoffs = currentCutoffs();
    if (selectionIsVisible(cutoffs)) {
        return;
    }
    const ThreadList visible = visibleThreads(cutoffs);
    setSelectedThreadID(visible.empty() ? std::nullopt
                                        : std::optional<std::string>(visible.front().id()));
}

} // namespace tallyview
