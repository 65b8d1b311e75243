#pragma once

#include "app/presentation/ModelObserver.h"

namespace tallyview {

/// Whether the agent's database could be read.
class DatabaseState : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool readFailed READ readFailed NOTIFY changed)
    Q_PROPERTY(QString label READ label NOTIFY changed)

public:
    using ModelObserver::ModelObserver;

    bool readFailed() const { return m_readFailed; }
    /// The same in words.
    QString label() const {
        return m_readFailed ? QStringLiteral("读取失败") : QStringLiteral("SQLite · 本机只读");
    }

private:
    void update() override { m_readFailed = model()->errorMessage().has_value(); }

    bool m_readFailed = false;
};

} // namespace tallyview
