#pragma once

#include "core/ThreadTimeGroup.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace tallyview {

/// Where the headers and rows of a list grouped by time stand, in points from its top.
///
/// All heights are known, so every position is exact without any row having been created.
class ThreadListLayout {
public:
    static constexpr double headerHeight = 38;
    static constexpr double rowHeight = 58;
    static constexpr double rowSpacing = 10;
    static constexpr double groupPadding = 14; ///< below the last row of a group
    static constexpr double listPadding = 20;  ///< below the last group

    /// Rows `first` to `end` - 1 of a group.
    struct Range {
        std::size_t group;
        std::size_t first;
        std::size_t end;

        friend bool operator==(const Range &, const Range &) = default;
    };

    ThreadListLayout() = default;
    explicit ThreadListLayout(const std::vector<ThreadTimeGroup> &groups);

    double height() const;
    double headerTop(std::size_t group) const { return m_groups[group].top; }
    double rowTop(std::size_t group, std::size_t row) const {
        return m_groups[group].top + headerHeight + static_cast<double>(row) * rowPitch;
    }

    /// The rows that reach into the stretch between two heights, group by group; a group whose
    /// header alone reaches in has an empty range.
    std::vector<Range> rangesWithin(double top, double bottom) const;

private:
    static constexpr double rowPitch = rowHeight + rowSpacing;

    struct Group {
        double top;
        std::size_t rows;
        double bottom() const;
    };
    std::vector<Group> m_groups;
};

} // namespace tallyview
