#include "app/presentation/ThreadListLayout.h"

#include <algorithm>
#include <cmath>

namespace tallyview {

namespace {

/// `distance` in rows, kept within 0 and `rows`.
std::size_t clampedRow(double distance, std::size_t rows) {
    return static_cast<std::size_t>(std::clamp(distance, 0.0, static_cast<double>(rows)));
}

} // namespace

double ThreadListLayout::Group::bottom() const {
    return top + headerHeight + static_cast<double>(rows) * rowPitch - rowSpacing + groupPadding;
}

ThreadListLayout::ThreadListLayout(const std::vector<ThreadTimeGroup> &groups) {
    double top = 0;
    for (const ThreadTimeGroup &group : groups) {
        m_groups.push_back({top, group.threads.size()});
        top = m_groups.back().bottom();
    }
}

double ThreadListLayout::height() const {
    return m_groups.empty() ? 0 : m_groups.back().bottom() + listPadding;
}

std::vector<ThreadListLayout::Range> ThreadListLayout::rangesWithin(double top,
                                                                    double bottom) const {
    std::vector<Range> ranges;
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        const Group &group = m_groups[i];
        if (group.bottom() <= top || group.top >= bottom) {
            continue;
        }
        const double firstRow = group.top + headerHeight;
        const std::size_t first =
            clampedRow(std::floor((top - firstRow + rowSpacing) / rowPitch), group.rows);
        const std::size_t end = clampedRow(std::ceil((bottom - firstRow) / rowPitch), group.rows);
        ranges.push_back({i, first, std::max(first, end)});
    }
    return ranges;
}

} // namespace tallyview
