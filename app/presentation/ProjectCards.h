#pragma once

#include "app/model/CalendarCutoffs.h"
#include "app/model/ProjectSummary.h"
#include "app/presentation/ListAdapter.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tallyview {

/// One project, ready to be drawn as a card.
struct ProjectCard {
    Q_GADGET
    QML_VALUE_TYPE(projectCard)
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString code MEMBER code)
    Q_PROPERTY(QString updated MEMBER updated)
    Q_PROPERTY(QString running MEMBER running)
    Q_PROPERTY(QString completed MEMBER completed)
    Q_PROPERTY(QString count MEMBER count)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString helpText MEMBER helpText)

public:
    QString key;     ///< the exact name of the project
    QString name;    ///< as it is shown
    QString code;    ///< the short code on its badge
    QString updated; ///< how long ago one of its threads was updated
    QString running; ///< numbers of threads, in words
    QString completed;
    QString count;
    QString label;    ///< name and figures, in words
    QString helpText; ///< what a press does

    friend bool operator==(const ProjectCard &, const ProjectCard &) = default;
};

using ProjectCardList = ListAdapter<ProjectCard>;

ProjectCard projectCard(const ProjectSummary &project, Instant now, const UtcOffset &utcOffset);

} // namespace tallyview
