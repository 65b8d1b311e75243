#include "app/presentation/ThreadIndexContent.h"

#include <algorithm>
#include <utility>

namespace tallyview {

namespace {

/// Rows this far outside the visible stretch exist already: the one that the keyboard reaches next,
/// but no more, since scrolling far makes all of them anew.
constexpr double overscan = 80;

} // namespace

void ThreadIndexContent::setIndex(ThreadIndexState *index) {
    m_index = index;
    follow(*index);
}

void ThreadIndexContent::setViewTop(double top) {
    if (m_viewTop != top) {
        m_viewTop = top;
        showRows();
        emit viewTopChanged();
    }
}

void ThreadIndexContent::setViewHeight(double height) {
    if (m_viewHeight != height) {
        m_viewHeight = height;
        showRows();
        emit viewHeightChanged();
    }
}

void ThreadIndexContent::select(int row) {
    model()->setSelectedThreadID(std::string(threadOfRow(row).id()));
}

void ThreadIndexContent::open(int row) {
    const ThreadRecord thread = threadOfRow(row);
    select(row);
    model()->open(thread);
}

const ThreadRecord &ThreadIndexContent::threadOfRow(int row) const {
    return m_rowThreads.at(static_cast<std::size_t>(row));
}

void ThreadIndexContent::update() {
    const bool isFirst = !m_groups;
    const auto before = std::exchange(m_groups, m_index->timeGroups());
    const ThreadListLayout layoutBefore = std::exchange(m_layout, ThreadListLayout(*m_groups));
    const Face faceBefore = std::exchange(m_face, currentFace());
    m_errorMessage = QString::fromStdString(model()->errorMessage().value_or(std::string()));
    const QString nameBefore = std::exchange(m_request, m_index->request());
    const auto selectedBefore = std::exchange(m_selectedID, model()->selectedThreadID());
    // Before the view hears of the new height, which may move it.
    const double top = isFirst                   ? m_viewTop
                       : nameBefore != m_request ? topOfSearch(nameBefore)
                                                 : anchoredTop(*before, layoutBefore);
    emit changed();
    scrollTo(top, false);
    m_ranges = rangesNearView();
    rebuildRows();
    // A list that has just come begins where it was left.
    if (faceBefore == List && m_selectedID && m_selectedID != selectedBefore) {
        showSelection();
    }
}

ThreadIndexContent::Face ThreadIndexContent::currentFace() const {
    if (model()->threads().empty() && model()->isLoading()) {
        return Loading;
    }
    if (model()->threads().empty() && model()->errorMessage()) {
        return Error;
    }
    return m_groups->empty() ? Empty : List;
}

double ThreadIndexContent::anchoredTop(const Groups &before,
                                       const ThreadListLayout &layoutBefore) const {
    if (m_viewTop <= 0) {
        return m_viewTop;
    }
    for (const auto &range : layoutBefore.rangesWithin(m_viewTop, m_viewTop + m_viewHeight)) {
        for (std::size_t row = range.first; row < range.end; ++row) {
            if (const auto top =
                    topOf(before[range.group].threads[row].id(), before[range.group].id)) {
                return m_viewTop + *top - layoutBefore.rowTop(range.group, row);
            }
        }
    }
    return m_viewTop;
}

double ThreadIndexContent::topOfSearch(const QString &nameBefore) {
    if (nameBefore == m_index->contentIdentity()) {
        m_topBeforeSearch = m_viewTop;
    }
    return m_index->query().isEmpty() ? m_topBeforeSearch : 0;
}

void ThreadIndexContent::scrollTo(double top, bool animated) {
    const double lowest = std::max(0.0, m_layout.height() - m_viewHeight);
    const double clamped = std::clamp(top, 0.0, lowest);
    if (clamped == m_viewTop) {
        return;
    }
    if (!animated) {
        m_viewTop = clamped;
    }
    emit scrollRequested(clamped, animated);
}

void ThreadIndexContent::showSelection() {
    if (const auto top = topOf(*m_selectedID)) {
        scrollTo(*top + (ThreadListLayout::rowHeight - m_viewHeight) / 2, true);
    }
}

std::optional<double> ThreadIndexContent::topOf(std::string_view id,
                                                std::string_view preferredGroup) const {
    std::optional<double> top;
    for (std::size_t group = 0; group < m_groups->size(); ++group) {
        const bool isPreferred = (*m_groups)[group].id == preferredGroup;
        if (top && !isPreferred) {
            continue;
        }
        const ThreadList &threads = (*m_groups)[group].threads;
        const std::size_t row = positionOf(threads, id);
        if (row < threads.size()) {
            top = m_layout.rowTop(group, row);
        }
    }
    return top;
}

std::vector<ThreadListLayout::Range> ThreadIndexContent::rangesNearView() const {
    return m_layout.rangesWithin(m_viewTop - overscan, m_viewTop + m_viewHeight + overscan);
}

void ThreadIndexContent::showRows() {
    auto ranges = rangesNearView();
    if (ranges != m_ranges) {
        m_ranges = std::move(ranges);
        rebuildRows();
    }
}

void ThreadIndexContent::rebuildRows() {
    if (!m_index || !m_groups) {
        return;
    }
    std::vector<TimeGroupRow> headers;
    std::vector<TaskRow> rows;
    m_rowThreads.clear();
    const UtcOffset utcOffset = model()->environment().utcOffset();
    for (const auto &range : m_ranges) {
        const ThreadTimeGroup &group = (*m_groups)[range.group];
        headers.push_back(timeGroupRow(group));
        headers.back().top = m_layout.headerTop(range.group);
        for (std::size_t i = range.first; i < range.end; ++i) {
            const ThreadRecord &thread = group.threads[i];
            rows.push_back(taskRow(thread, group, m_index->evaluatedAt(), utcOffset));
            rows.back().selected = m_selectedID && canonicallyEqual(thread.id(), *m_selectedID);
            rows.back().top = m_layout.rowTop(range.group, i);
            m_rowThreads.push_back(thread);
        }
    }
    m_headers.show(std::move(headers));
    m_rows.show(std::move(rows));
    ++m_rowsRevision;
    emit rowsChanged();
}

} // namespace tallyview
