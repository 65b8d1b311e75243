#pragma once

#include "app/presentation/ListAdapter.h"
#include "app/presentation/ModelObserver.h"

namespace tallyview {

/// One project of the navigation.
struct ProjectRow {
    Q_GADGET
    QML_VALUE_TYPE(projectRow)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString code MEMBER code)
    Q_PROPERTY(QString count MEMBER count)
    Q_PROPERTY(bool selected MEMBER selected)

public:
    QString key;   ///< the project's name
    QString name;  ///< in one line
    QString code;  ///< a few letters
    QString count; ///< number of its threads, as digits
    bool selected = false;

    friend bool operator==(const ProjectRow &, const ProjectRow &) = default;
};

using ProjectRowList = ListAdapter<ProjectRow>;

/// The projects and the shortcuts of the sidebar, and what choosing them does.
/// Counts are decimal digits.
class ProjectNavigation : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QAbstractItemModel *projects READ projects CONSTANT)
    Q_PROPERTY(bool allProjects READ allProjects NOTIFY changed)
    Q_PROPERTY(bool pinnedOnly READ pinnedOnly NOTIFY changed)
    Q_PROPERTY(QString threadCount READ threadCount NOTIFY changed)
    Q_PROPERTY(QString allProjectsLabel READ allProjectsLabel NOTIFY changed)
    Q_PROPERTY(QString todayCount READ todayCount NOTIFY changed)
    Q_PROPERTY(QString pinnedCount READ pinnedCount NOTIFY changed)
    Q_PROPERTY(QString archivedCount READ archivedCount NOTIFY changed)

public:
    /// No more projects than this are listed.
    static constexpr std::size_t mostProjects = 12;

    using ModelObserver::ModelObserver;

    QAbstractItemModel *projects() { return &m_projects; }
    bool allProjects() const { return m_allProjects; } ///< no project is selected
    bool pinnedOnly() const { return m_pinnedOnly; }
    QString threadCount() const { return m_threadCount; } ///< of threads that nobody spawned
    QString allProjectsLabel() const;
    QString todayCount() const { return m_todayCount; }
    QString pinnedCount() const { return m_pinnedCount; }
    QString archivedCount() const { return m_archivedCount; }

    Q_INVOKABLE void chooseAllProjects();
    /// Selects the project of a row of projects(), or none when it is the selected one.
    Q_INVOKABLE void choose(int row);
    // Shortcuts to filters; the selected project stays.
    Q_INVOKABLE void showToday();
    Q_INVOKABLE void togglePinnedOnly();
    Q_INVOKABLE void showArchived();

private:
    void update() override;
    void countThreads();
    void showProjects();

    /// What the counts were taken of: the list, whether subagents count, and the day.
    std::optional<std::tuple<std::uint64_t, bool, Instant, Instant>> m_counted;
    std::vector<ProjectCount> m_largest;
    ProjectRowList m_projects;
    bool m_allProjects = true;
    bool m_pinnedOnly = false;
    QString m_threadCount;
    QString m_todayCount;
    QString m_pinnedCount;
    QString m_archivedCount;
};

} // namespace tallyview
