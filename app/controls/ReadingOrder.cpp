#include "app/controls/ReadingOrder.h"

#include <algorithm>

namespace tallyview {

void ReadingOrder::sortByTop(QQuickItem *parent) {
    QList<QQuickItem *> items = parent->childItems();
    std::stable_sort(items.begin(), items.end(),
                     [](const QQuickItem *a, const QQuickItem *b) { return a->y() < b->y(); });
    for (qsizetype i = 1; i < items.size(); ++i) {
        // Does nothing where they follow each other already.
        items[i]->stackAfter(items[i - 1]);
    }
}

} // namespace tallyview
