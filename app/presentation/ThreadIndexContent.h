#pragma once

#include "app/presentation/ThreadIndexState.h"
#include "app/presentation/ThreadListLayout.h"
#include "app/presentation/ThreadRows.h"

#include <QPointer>

namespace tallyview {

/// The content below the header of the thread index: which of its four faces shows, and the rows
/// of the list near the visible stretch. Heights are in points.
class ThreadIndexContent : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tallyview::ThreadIndexState *index READ index WRITE setIndex REQUIRED)
    Q_PROPERTY(double viewTop READ viewTop WRITE setViewTop NOTIFY viewTopChanged)
    Q_PROPERTY(double viewHeight READ viewHeight WRITE setViewHeight NOTIFY viewHeightChanged)
    Q_PROPERTY(tallyview::ThreadIndexContent::Face face READ face NOTIFY changed)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY changed)
    Q_PROPERTY(QString emptyTitle READ emptyTitle CONSTANT)
    Q_PROPERTY(QString request MEMBER m_request NOTIFY changed)
    Q_PROPERTY(double contentHeight READ contentHeight NOTIFY changed)
    Q_PROPERTY(int rowsRevision MEMBER m_rowsRevision NOTIFY rowsChanged)
    Q_PROPERTY(QAbstractItemModel *headers READ headers CONSTANT)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)

public:
    enum Face { Loading, Error, Empty, List };
    Q_ENUM(Face)

    using ModelObserver::ModelObserver;

    ThreadIndexState *index() const { return m_index; }
    /// Set once; not owned.
    void setIndex(ThreadIndexState *index);
    double viewTop() const { return m_viewTop; }
    void setViewTop(double top);
    double viewHeight() const { return m_viewHeight; }
    void setViewHeight(double height);

    Face face() const { return m_face; }
    QString errorMessage() const { return m_errorMessage; }
    static QString emptyTitle() { return emptyListTitle(); }
    double contentHeight() const { return m_layout.height(); }
    QAbstractItemModel *headers() { return &m_headers; }
    QAbstractItemModel *rows() { return &m_rows; }

    /// Select, or select and open, the thread of a row of rows().
    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void open(int row);

signals:
    void viewTopChanged();
    void viewHeightChanged();
    /// Headers or rows have come, gone or moved.
    void rowsChanged();
    /// The view is to show the list from `top` on.
    void scrollRequested(double top, bool animated);

private:
    using Groups = std::vector<ThreadTimeGroup>;

    void update() override;
    Face currentFace() const;
    /// The top that keeps the first visible row where it is after the list has changed.
    double anchoredTop(const Groups &before, const ThreadListLayout &layoutBefore) const;
    /// Where the list of a new query begins; without one it is where it was before the search.
    double topOfSearch(const QString &nameBefore);
    void scrollTo(double top, bool animated);
    void showSelection();
    std::vector<ThreadListLayout::Range> rangesNearView() const;
    /// Hands out the rows near the visible stretch, unless they already are.
    void showRows();
    void rebuildRows();
    /// If the thread is in two groups, its row in `preferredGroup` counts, else the first.
    std::optional<double> topOf(std::string_view id, std::string_view preferredGroup = {}) const;
    const ThreadRecord &threadOfRow(int row) const;

    QPointer<ThreadIndexState> m_index;
    double m_viewTop = 0;
    double m_viewHeight = 0;
    Face m_face = Loading;
    QString m_errorMessage;
    QString m_request;            ///< of the index when this was last worked out
    double m_topBeforeSearch = 0; ///< where the list was without a query
    std::optional<std::string> m_selectedID;
    std::shared_ptr<const Groups> m_groups;
    ThreadListLayout m_layout;
    std::vector<ThreadListLayout::Range> m_ranges; ///< what m_rows shows
    TimeGroupRowList m_headers;
    TaskRowList m_rows;
    std::vector<ThreadRecord> m_rowThreads; ///< the threads of m_rows
    int m_rowsRevision = 0;                 ///< counts how often headers or rows may have moved
};

} // namespace tallyview
