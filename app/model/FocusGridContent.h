#pragma once

#include "app/model/FocusGridState.h"
#include "app/model/ProjectCards.h"

#include <QPointer>
#include <QtQmlIntegration>

namespace tallyview {

/// What stands below the header of the project grid: the cards, or why there are none. While
/// `live` it follows its grid; content that is being replaced keeps what it shows.
class FocusGridContent : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tallyview::FocusGridState *grid READ grid WRITE setGrid NOTIFY gridChanged)
    Q_PROPERTY(bool live MEMBER m_live NOTIFY liveChanged)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel *cards READ cards CONSTANT)

public:
    using QObject::QObject;

    FocusGridState *grid() const { return m_grid; }
    void setGrid(FocusGridState *grid);
    /// Why there is nothing to show: the last failure, or what to expect.
    QString message() const { return m_message; }
    QAbstractItemModel *cards() { return &m_cards; }

signals:
    void gridChanged();
    void liveChanged();
    void changed();

private:
    void follow();

    QPointer<FocusGridState> m_grid;
    bool m_live = true;
    QString m_message;
    ProjectCardList m_cards;
};

} // namespace tallyview
