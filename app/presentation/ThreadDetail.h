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

public:
    QString label; ///< what it is called
    QString value; ///< whole

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
    Q_PROPERTY(tallyview::DetailProperty project MEMBER project)
    Q_PROPERTY(tallyview::DetailProperty updated MEMBER updated)
    Q_PROPERTY(tallyview::DetailProperty source MEMBER source)
    Q_PROPERTY(tallyview::DetailProperty model MEMBER model)
    Q_PROPERTY(tallyview::DetailProperty effort MEMBER effort)
    Q_PROPERTY(tallyview::DetailProperty tokens MEMBER tokens)
    Q_PROPERTY(tallyview::DetailProperty branch MEMBER branch)
    Q_PROPERTY(tallyview::DetailProperty directory MEMBER directory)
    Q_PROPERTY(tallyview::DetailProperty threadID MEMBER threadID)

public:
    bool exists = false;
    bool active = false; ///< runs and is not archived
    bool pinned = false;
    QString badge;      ///< project code and the first characters of the id
    QString stateLabel; ///< the state in words
    QString title;
    QString preview; ///< or a sentence saying that there is none
    DetailProperty project{QStringLiteral("项目"), {}};
    DetailProperty updated{QStringLiteral("更新时间"), {}};
    DetailProperty source{QStringLiteral("来源"), {}};
    // "未记录" for what the agent has not recorded.
    DetailProperty model{QStringLiteral("模型"), {}};
    DetailProperty effort{QStringLiteral("推理强度"), {}};
    DetailProperty tokens{QStringLiteral("Token"), {}};
    DetailProperty branch{QStringLiteral("分支"), {}};
    DetailProperty directory{QStringLiteral("工作目录"), {}};
    DetailProperty threadID{QStringLiteral("Thread ID"), {}};

    /// The recorded ones, in the order in which they are shown.
    QList<DetailProperty> properties() const {
        return {project, updated, source, model, effort, tokens, branch, directory, threadID};
    }

    friend bool operator==(const ThreadDetail &, const ThreadDetail &) = default;
};

ThreadDetail threadDetail(const ThreadRecord &thread, bool pinned, const UtcOffset &utcOffset,
                          const ThreadFormatting::Number &number);

} // namespace tallyview
