#pragma once

#include "app/presentation/ThreadDetail.h"
#include "app/presentation/ThreadRows.h"

#include <QtQml/qqml.h>

/// The values that views draw, as QML knows them.
namespace tallyview {

struct ThreadDetailType {
    Q_GADGET
    QML_FOREIGN(tallyview::ThreadDetail)
    QML_VALUE_TYPE(threadDetail)
};

struct DetailPropertyType {
    Q_GADGET
    QML_FOREIGN(tallyview::DetailProperty)
    QML_VALUE_TYPE(detailProperty)
};

struct TaskRowType {
    Q_GADGET
    QML_FOREIGN(tallyview::TaskRow)
    QML_VALUE_TYPE(taskRow)
};

struct TimeGroupRowType {
    Q_GADGET
    QML_FOREIGN(tallyview::TimeGroupRow)
    QML_VALUE_TYPE(timeGroupRow)
};

} // namespace tallyview
