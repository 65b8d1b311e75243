#pragma once

#include "app/presentation/FocusProject.h"
#include "app/presentation/ModelObserver.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace tallyview {

/// What the header of the thread index shows and does, and the lists its content is made from.
class ThreadIndexState : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tallyview::FocusProject *project READ project WRITE setProject NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QStringList statusTitles READ statusTitles CONSTANT)
    Q_PROPERTY(QStringList recencyTitles READ recencyTitles CONSTANT)
    Q_PROPERTY(QStringList statusLabels READ statusLabels NOTIFY changed)
    Q_PROPERTY(int statusFilter READ statusFilter NOTIFY changed)
    Q_PROPERTY(int recencyFilter READ recencyFilter NOTIFY changed)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY changed)
    Q_PROPERTY(QString visibleCount READ visibleCount NOTIFY changed)
    Q_PROPERTY(bool loading READ isLoading NOTIFY changed)
    Q_PROPERTY(bool hasExtraFilters READ hasExtraFilters NOTIFY changed)
    Q_PROPERTY(QString contentIdentity READ contentIdentity NOTIFY changed)
    Q_PROPERTY(QString request READ request NOTIFY changed)

public:
    using ModelObserver::ModelObserver;

    FocusProject *project() const { return m_project; }
    /// The open project whose threads these are, set once; without one they are those of all
    /// projects.
    void setProject(FocusProject *project);
    QString title() const { return m_title; }
    static QStringList statusTitles();
    static QStringList recencyTitles();
    /// Title and number of threads of each status, in words.
    QStringList statusLabels() const { return m_statusLabels; }
    /// Positions in statusTitles() and recencyTitles().
    int statusFilter() const;
    int recencyFilter() const;
    QString query() const;
    void setQuery(const QString &query);
    QString visibleCount() const;
    bool isLoading() const { return model() && model()->isLoading(); }
    /// Whether there is something to reset. The open project is no filter.
    bool hasExtraFilters() const;
    /// Names the current combination of filters; the content is replaced when it changes.
    QString contentIdentity() const { return m_contentIdentity; }
    /// Names what is asked for: the filters and the query. Empty before the first update.
    QString request() const { return m_contentIdentity + query(); }
    /// The same for QML to read once, where following it would be wrong.
    Q_INVOKABLE QString requestNow() const { return request(); }

    Q_INVOKABLE void chooseStatus(int position);
    Q_INVOKABLE void chooseRecency(int position);
    Q_INVOKABLE void resetFilters();
    Q_INVOKABLE void refresh();

    /// The lists of the last update.
    const ThreadList &visibleThreads() const { return m_visible; }
    std::shared_ptr<const std::vector<ThreadTimeGroup>> timeGroups() const { return m_groups; }
    Instant evaluatedAt() const { return m_evaluatedAt; }

private:
    void update() override;
    void countThreads();

    /// What the counts in the status labels were taken of.
    std::optional<std::pair<std::uint64_t, std::optional<std::string>>> m_counted;
    QPointer<FocusProject> m_project;
    QString m_title = QStringLiteral("任务动态");
    QStringList m_statusLabels;
    ThreadList m_visible;
    std::shared_ptr<const std::vector<ThreadTimeGroup>> m_groups;
    Instant m_evaluatedAt;
    QString m_contentIdentity;
};

} // namespace tallyview
