#pragma once

#include "app/presentation/ListDiff.h"

#include <QAbstractListModel>

#include <algorithm>
#include <utility>
#include <vector>

namespace tallyview {

/// Hands a list of values to a view. A view that shows it keeps every delegate whose row stays.
///
/// `Row` is an equality-comparable gadget with a member `QString key`, its identity in the list.
/// The view reads the whole value under the role "row".
template <class Row>
class ListAdapter : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    enum Role { RowRole = Qt::UserRole };

    int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    QVariant data(const QModelIndex &index, int role) const override {
        return role == RowRole && checkIndex(index, CheckIndexOption::IndexIsValid)
                   ? QVariant::fromValue(row(index.row()))
                   : QVariant();
    }
    QHash<int, QByteArray> roleNames() const override { return {{RowRole, "row"}}; }

    const std::vector<Row> &rows() const { return m_rows; }
    const Row &row(int index) const { return m_rows[static_cast<std::size_t>(index)]; }

    /// Makes `next` the list, and tells the views the fewest removals, moves, insertions and
    /// changes that lead there.
    void show(std::vector<Row> next) {
        for (const ListStep &step : listSteps(keys(m_rows), keys(next))) {
            apply(step, next);
        }
        applyChanges(std::move(next));
    }

private:
    static std::vector<QString> keys(const std::vector<Row> &rows) {
        std::vector<QString> result;
        result.reserve(rows.size());
        std::transform(rows.begin(), rows.end(), std::back_inserter(result),
                       [](const Row &row) { return row.key; });
        return result;
    }

    void apply(const ListStep &step, const std::vector<Row> &next) {
        const int last = step.first + step.count - 1;
        const auto first = m_rows.begin() + step.first;
        switch (step.kind) {
        case ListStep::Kind::remove:
            beginRemoveRows({}, step.first, last);
            m_rows.erase(first, first + step.count);
            endRemoveRows();
            break;
        case ListStep::Kind::move:
            beginMoveRows({}, step.first, last, {}, step.destination);
            if (step.first < step.destination) {
                std::rotate(first, first + 1, m_rows.begin() + step.destination);
            } else {
                std::rotate(m_rows.begin() + step.destination, first, first + 1);
            }
            endMoveRows();
            break;
        case ListStep::Kind::insert:
            beginInsertRows({}, step.first, last);
            m_rows.insert(first, next.begin() + step.first, next.begin() + last + 1);
            endInsertRows();
            break;
        }
    }

    void applyChanges(std::vector<Row> next) {
        const int size = static_cast<int>(next.size());
        int begin = 0;
        while (begin < size) {
            int end = begin;
            while (end < size && !(row(end) == next[static_cast<std::size_t>(end)])) {
                m_rows[static_cast<std::size_t>(end)] =
                    std::move(next[static_cast<std::size_t>(end)]);
                ++end;
            }
            if (end > begin) {
                emit dataChanged(index(begin), index(end - 1), {RowRole});
            }
            begin = end + 1;
        }
    }

    std::vector<Row> m_rows;
};

} // namespace tallyview
