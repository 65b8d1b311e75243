#pragma once

#include <QString>

#include <vector>

namespace tallyview {

/// One change of a list, in the terms of QAbstractItemModel.
struct ListStep {
    enum class Kind { remove, move, insert };

    Kind kind;
    int first;           ///< first row that is removed, moved or inserted
    int count;           ///< number of rows; 1 for a move
    int destination = 0; ///< row before which a moved row lands, counted before the move

    friend bool operator==(const ListStep &, const ListStep &) = default;
};

/// The fewest steps, to be applied one after another, that turn a list with the keys `current`
/// into one with the keys `next`: removals from the end, then moves, then insertions from the
/// start. The keys of one list are distinct.
std::vector<ListStep> listSteps(const std::vector<QString> &current,
                                const std::vector<QString> &next);

} // namespace tallyview
