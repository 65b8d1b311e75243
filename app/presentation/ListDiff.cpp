#include "app/presentation/ListDiff.h"

#include <QHash>

#include <algorithm>

namespace tallyview {

namespace {

constexpr int absent = -1;

/// Position of each key of `keys` in `other`.
std::vector<int> positionsIn(const std::vector<QString> &other, const std::vector<QString> &keys) {
    QHash<QString, int> positions;
    positions.reserve(static_cast<qsizetype>(other.size()));
    for (const QString &key : other) {
        positions.insert(key, static_cast<int>(positions.size()));
    }
    std::vector<int> result;
    result.reserve(keys.size());
    for (const QString &key : keys) {
        result.push_back(positions.value(key, absent));
    }
    return result;
}

/// The values of a longest increasing subsequence: these rows need no move.
std::vector<int> longestIncreasing(const std::vector<int> &values) {
    std::vector<std::size_t> tails;
    std::vector<std::size_t> previous(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto place =
            std::lower_bound(tails.begin(), tails.end(), values[i],
                             [&](std::size_t tail, int value) { return values[tail] < value; });
        previous[i] = place == tails.begin() ? i : *std::prev(place);
        if (place == tails.end()) {
            tails.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<int> result(tails.size());
    for (std::size_t k = tails.size(), i = tails.empty() ? 0 : tails.back(); k > 0; --k) {
        result[k - 1] = values[i];
        i = previous[i];
    }
    return result;
}

/// Appends one step per run of absent entries.
void appendRuns(std::vector<ListStep> &steps, ListStep::Kind kind,
                const std::vector<int> &counterparts, bool fromEnd) {
    const int size = static_cast<int>(counterparts.size());
    std::vector<ListStep> runs;
    for (int i = 0; i < size; ++i) {
        if (counterparts[static_cast<std::size_t>(i)] != absent) {
            continue;
        }
        if (!runs.empty() && runs.back().first + runs.back().count == i) {
            ++runs.back().count;
        } else {
            runs.push_back({kind, i, 1});
        }
    }
    if (fromEnd) {
        std::reverse(runs.begin(), runs.end());
    }
    steps.insert(steps.end(), runs.begin(), runs.end());
}

/// Moves every row that is out of place to just after its predecessor.
void appendMoves(std::vector<ListStep> &steps, std::vector<int> order) {
    const std::vector<int> stable = longestIncreasing(order);
    if (stable.size() == order.size()) {
        return;
    }
    std::vector<int> targets = order;
    std::sort(targets.begin(), targets.end());
    for (std::size_t k = 0; k < targets.size(); ++k) {
        if (std::binary_search(stable.begin(), stable.end(), targets[k])) {
            continue;
        }
        const auto from = std::find(order.begin(), order.end(), targets[k]);
        const auto to =
            k == 0 ? order.begin() : std::find(order.begin(), order.end(), targets[k - 1]) + 1;
        steps.push_back({ListStep::Kind::move, static_cast<int>(from - order.begin()), 1,
                         static_cast<int>(to - order.begin())});
        if (from < to) {
            std::rotate(from, from + 1, to);
        } else {
            std::rotate(to, from, from + 1);
        }
    }
}

} // namespace

std::vector<ListStep> listSteps(const std::vector<QString> &current,
                                const std::vector<QString> &next) {
    std::vector<ListStep> steps;
    if (current == next) {
        return steps;
    }
    std::vector<int> targets = positionsIn(next, current);
    appendRuns(steps, ListStep::Kind::remove, targets, true);
    std::erase(targets, absent);
    appendMoves(steps, std::move(targets));
    appendRuns(steps, ListStep::Kind::insert, positionsIn(current, next), false);
    return steps;
}

} // namespace tallyview
