#pragma once

#include "app/model/CalendarCutoffs.h"
#include "app/presentation/ListAdapter.h"
#include "core/ThreadTimeGroup.h"

#include <QObject>

namespace tallyview {

/// One thread, ready to be drawn as a row of the list.
struct TaskRow {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString meta MEMBER meta)
    Q_PROPERTY(QString age MEMBER age)
    Q_PROPERTY(QString stateLabel MEMBER stateLabel)
    Q_PROPERTY(QString description READ description)
    Q_PROPERTY(QString openLabel MEMBER openLabel)
    Q_PROPERTY(bool active MEMBER active)
    Q_PROPERTY(bool selected MEMBER selected)
    Q_PROPERTY(double top MEMBER top)

public:
    QString key;        ///< the time group and the thread's id
    QString title;      ///< in one line
    QString meta;       ///< project code, project and source
    QString age;        ///< how long ago the thread was updated
    QString stateLabel; ///< the state in words
    QString openLabel;  ///< what the open button does, in words
    bool active = false;
    bool selected = false;
    double top = 0; ///< distance from the top of the list, in points

    /// What a screen reader says after the title: all else that the row shows.
    QString description() const { return QStringList{stateLabel, age, meta}.join(u'，'); }

    friend bool operator==(const TaskRow &, const TaskRow &) = default;
};

/// The heading of one time group.
struct TimeGroupRow {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString count MEMBER count)
    Q_PROPERTY(double top MEMBER top)

public:
    QString key; ///< the group's id
    QString title;
    QString count; ///< number of threads, as digits
    double top = 0;

    friend bool operator==(const TimeGroupRow &, const TimeGroupRow &) = default;
};

using TaskRowList = ListAdapter<TaskRow>;

using TimeGroupRowList = ListAdapter<TimeGroupRow>;

TaskRow taskRow(const ThreadRecord &thread, const ThreadTimeGroup &group, Instant now,
                const UtcOffset &utcOffset);
TimeGroupRow timeGroupRow(const ThreadTimeGroup &group);

/// What a list without threads says.
QString emptyListTitle();

} // namespace tallyview
