#pragma once

#include "app/presentation/ThreadFormatting.h"

#include <QList>
#include <QObject>

namespace tallyview {

/// One recorded property of a thread.
struct DetailProperty {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(bool monospaced MEMBER monospaced)
    Q_PROPERTY(int maximumLines MEMBER maximumLines)

public:
    QString label; ///< what it is called
    QString value; ///< whole; "未记录" if the agent has not recorded it
    bool monospaced = true;
    int maximumLines = 2;

    friend bool operator==(const DetailProperty &, const DetailProperty &) = default;
};

/// One thread, ready to be drawn in the detail panel; by default no thread.
///
/// Title and preview are cut generously beyond what the panel shows of them; the properties are
/// whole, as they can be copied.
struct ThreadDetail {
    Q_GADGET
    Q_PROPERTY(bool exists MEMBER exists)
    Q_PROPERTY(bool active MEMBER active)
    Q_PROPERTY(bool pinned MEMBER pinned)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(QString stateLabel MEMBER stateLabel)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString preview MEMBER preview)
    Q_PROPERTY(QList<tallyview::DetailProperty> properties MEMBER properties)

public:
    bool exists = false;
    bool active = false; ///< runs and is not archived
    bool pinned = false;
    QString badge;      ///< project code and the first characters of the id
    QString stateLabel; ///< the state in words
    QString title;
    QString preview;                  ///< or a sentence saying that there is none
    QList<DetailProperty> properties; ///< always the same ones

    friend bool operator==(const ThreadDetail &, const ThreadDetail &) = default;
};

ThreadDetail threadDetail(const ThreadRecord &thread, bool pinned, const UtcOffset &utcOffset,
                          const ThreadFormatting::Number &number);

} // namespace tallyview
