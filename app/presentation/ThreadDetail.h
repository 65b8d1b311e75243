#pragma once

#include "app/presentation/ThreadFormatting.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tallyview {

/// One thread, ready to be drawn in the detail panel; by default no thread.
///
/// Title and preview are cut generously beyond what the panel shows of them; the properties are
/// whole, as they can be copied.
struct ThreadDetail {
    Q_GADGET
    QML_VALUE_TYPE(threadDetail)
    Q_PROPERTY(bool exists MEMBER exists)
    Q_PROPERTY(bool active MEMBER active)
    Q_PROPERTY(bool pinned MEMBER pinned)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(QString stateLabel MEMBER stateLabel)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString preview MEMBER preview)
    Q_PROPERTY(QString project MEMBER project)
    Q_PROPERTY(QString updated MEMBER updated)
    Q_PROPERTY(QString source MEMBER source)
    Q_PROPERTY(QString model MEMBER model)
    Q_PROPERTY(QString effort MEMBER effort)
    Q_PROPERTY(QString tokens MEMBER tokens)
    Q_PROPERTY(QString branch MEMBER branch)
    Q_PROPERTY(QString directory MEMBER directory)
    Q_PROPERTY(QString threadID MEMBER threadID)

public:
    bool exists = false;
    bool active = false; ///< runs and is not archived
    bool pinned = false;
    QString badge;      ///< project code and the first characters of the id
    QString stateLabel; ///< the state in words
    QString title;
    QString preview; ///< or a sentence saying that there is none
    QString project;
    QString updated;
    QString source;
    // "未记录" for what the agent has not recorded.
    QString model;
    QString effort;
    QString tokens;
    QString branch;
    QString directory;
    QString threadID;

    friend bool operator==(const ThreadDetail &, const ThreadDetail &) = default;
};

ThreadDetail threadDetail(const ThreadRecord &thread, bool pinned, const UtcOffset &utcOffset,
                          const ThreadFormatting::Number &number);

} // namespace tallyview
