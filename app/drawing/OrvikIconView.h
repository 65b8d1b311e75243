#pragma once

#include "app/drawing/PatchItem.h"

#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// The application's icon, filling a square with edges of `size` points. Main thread.
class OrvikIconView : public tallyview::PatchItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal size MEMBER m_edge NOTIFY edgeChanged)
    /// The tile in the icon: its distance from the square's edges, and its corner radius.
    Q_PROPERTY(qreal tileInset READ tileInset NOTIFY edgeChanged)
    Q_PROPERTY(qreal tileRadius READ tileRadius NOTIFY edgeChanged)

public:
    explicit OrvikIconView(QQuickItem *parent = nullptr);

    qreal tileInset() const { return m_edge * 32 / 512; }
    qreal tileRadius() const { return m_edge * 104 / 512; }

signals:
    void edgeChanged();

protected:
    SoftPatch makePatch(qreal pixelRatio) const override;

private:
    qreal m_edge = 36;
};

} // namespace tallyview
