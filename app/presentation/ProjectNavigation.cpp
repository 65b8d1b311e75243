#include "app/presentation/ProjectNavigation.h"

#include "app/presentation/DisplayText.h"
#include "core/TextSanitizer.h"

namespace tallyview {

namespace {

ProjectRow projectRow(const ProjectCount &project, const std::optional<std::string> &selected) {
    ProjectRow row;
    row.key = QString::fromStdString(project.name);
    row.name = DisplayText::oneLine(project.name);
    row.code = DisplayText::oneLine(TextSanitizer::projectCode(project.name));
    row.count = QString::number(project.count);
    row.selected = selected && canonicallyEqual(*selected, project.name);
    return row;
}

} // namespace

QString ProjectNavigation::allProjectsLabel() const {
    return QStringLiteral("全部项目，共 %1 个任务").arg(m_threadCount);
}

void ProjectNavigation::chooseAllProjects() { model()->setSelectedProject(std::nullopt); }

void ProjectNavigation::choose(int row) {
    model()->setProject(m_projects.row(row).key.toStdString());
}

void ProjectNavigation::showToday() {
    model()->setRecencyFilter(TaskRecencyFilter::today);
    model()->setPinnedOnly(false);
}

void ProjectNavigation::togglePinnedOnly() { model()->setPinnedOnly(!model()->pinnedOnly()); }

void ProjectNavigation::showArchived() {
    model()->setStatusFilter(TaskStatusFilter::completed);
    model()->setRecencyFilter(TaskRecencyFilter::older);
    model()->setPinnedOnly(false);
}

void ProjectNavigation::update() {
    // Typing and selecting do not change the counts, and counting is slow.
    const CalendarCutoffs cutoffs = model()->currentCutoffs();
    const std::tuple counted(model()->threadsRevision(), model()->includeSubagents(),
                             cutoffs.startOfToday, cutoffs.startOfTomorrow);
    if (m_counted != counted) {
        m_counted = counted;
        countThreads();
    }
    showProjects();
    m_allProjects = !model()->selectedProject();
    m_pinnedOnly = model()->pinnedOnly();
    m_pinnedCount = QString::number(model()->pinnedIDs().size());
}

void ProjectNavigation::countThreads() {
    m_largest = model()->projects();
    m_largest.resize(std::min(m_largest.size(), mostProjects));
    m_threadCount = QString::number(model()->rootCount());
    m_todayCount = QString::number(model()->todayCount());
    m_archivedCount = QString::number(model()->archivedCount());
}

void ProjectNavigation::showProjects() {
    std::vector<ProjectRow> rows;
    rows.reserve(m_largest.size());
    for (const ProjectCount &project : m_largest) {
        rows.push_back(projectRow(project, model()->selectedProject()));
    }
    m_projects.show(std::move(rows));
}

} // namespace tallyview
