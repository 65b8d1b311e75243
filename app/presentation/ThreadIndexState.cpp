#include "app/presentation/ThreadIndexState.h"

namespace tallyview {

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

template <class Enumeration>
QStringList titles() {
    QStringList result;
    for (const Enumeration value : allCases<Enumeration>) {
        result.append(text(title(value)));
    }
    return result;
}

template <class Enumeration>
Enumeration caseAt(int position) {
    return allCases<Enumeration>.at(static_cast<std::size_t>(position));
}

QString identity(const DashboardModel &model) {
    const QStringList parts{
        text(rawValue(model.statusFilter())), text(rawValue(model.recencyFilter())),
        QString::fromStdString(model.selectedProject().value_or("all-projects")),
        model.pinnedOnly() ? QStringLiteral("pinned") : QStringLiteral("not-pinned"),
        model.includeSubagents() ? QStringLiteral("with-subagents") : QStringLiteral("root-only")};
    return parts.join(u'-');
}

} // namespace

void ThreadIndexState::setProject(FocusProject *project) {
    if (project) {
        m_project = project;
        m_title = project->title();
        emit changed();
    }
}

QStringList ThreadIndexState::statusTitles() { return titles<TaskStatusFilter>(); }

QStringList ThreadIndexState::recencyTitles() { return titles<TaskRecencyFilter>(); }

void ThreadIndexState::countThreads() {
    m_statusLabels.clear();
    for (const TaskStatusFilter filter : allCases<TaskStatusFilter>) {
        m_statusLabels.append(QStringLiteral("%1，%2 个任务")
                                  .arg(text(tallyview::title(filter)))
                                  .arg(model()->count(filter)));
    }
}

int ThreadIndexState::statusFilter() const {
    return model() ? static_cast<int>(model()->statusFilter()) : 0;
}

int ThreadIndexState::recencyFilter() const {
    return model() ? static_cast<int>(model()->recencyFilter()) : 0;
}

QString ThreadIndexState::query() const {
    return model() ? QString::fromStdString(model()->query()) : QString();
}

void ThreadIndexState::setQuery(const QString &query) { model()->setQuery(query.toStdString()); }

QString ThreadIndexState::visibleCount() const {
    return QStringLiteral("%1 条").arg(m_visible.size());
}

bool ThreadIndexState::hasExtraFilters() const {
    return model() &&
           (m_project ? model()->hasExtraFiltersIgnoringProject() : model()->hasExtraFilters());
}

void ThreadIndexState::chooseStatus(int position) {
    model()->setStatusFilter(caseAt<TaskStatusFilter>(position));
}

void ThreadIndexState::chooseRecency(int position) {
    model()->setRecencyFilter(caseAt<TaskRecencyFilter>(position));
}

void ThreadIndexState::resetFilters() {
    const std::optional<std::string> project = model()->selectedProject();
    model()->clearFilters();
    if (m_project && project) {
        model()->setSelectedProject(project);
    }
}

void ThreadIndexState::refresh() { model()->refresh(); }

void ThreadIndexState::update() {
    const CalendarCutoffs cutoffs = model()->currentCutoffs();
    m_evaluatedAt = cutoffs.now;
    m_visible = model()->visibleThreads(cutoffs);
    m_groups = std::make_shared<const std::vector<ThreadTimeGroup>>(
        DashboardModel::timeGroups(m_visible, cutoffs));
    m_contentIdentity = identity(*model());
    const std::pair counted(model()->threadsRevision(), model()->selectedProject());
    if (m_counted != counted) {
        m_counted = counted;
        countThreads();
    }
}

} // namespace tallyview
