#pragma once

#include "app/presentation/FocusGridState.h"
#include "app/presentation/ProjectCards.h"

#include <QPointer>

namespace tallyview {

/// The content below the header of the project grid: the cards, or why there are none.
class FocusGridContent : public tallyview::ModelObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tallyview::FocusGridState *grid READ grid WRITE setGrid REQUIRED)
    Q_PROPERTY(tallyview::FocusGridState::Face face READ face NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel *cards READ cards CONSTANT)

public:
    using ModelObserver::ModelObserver;

    FocusGridState *grid() const { return m_grid; }
    /// Set once; not owned.
    void setGrid(FocusGridState *grid);
    FocusGridState::Face face() const { return m_face; }
    /// Why there is nothing to show: the last failure, or what to expect.
    QString message() const { return m_message; }
    QAbstractItemModel *cards() { return &m_cards; }

private:
    void update() override;

    QPointer<FocusGridState> m_grid;
    FocusGridState::Face m_face = FocusGridState::Loading;
    QString m_message;
    ProjectCardList m_cards;
};

} // namespace tallyview
