#pragma once

#include "app/drawing/PatchItem.h"
#include "app/drawing/SymbolImage.h"

#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// A system symbol, drawn in the middle of the item in one colour. Main thread.
///
/// The implicit size is the symbol's box, about 1.15 times its point size; a
/// larger item is a frame around it. An unknown name draws nothing.
class SoftSymbol : public tallyview::PatchItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY symbolChanged)
    Q_PROPERTY(qreal size MEMBER m_size NOTIFY symbolChanged)
    /// A QFont weight, as `Font.Bold`.
    Q_PROPERTY(int weight MEMBER m_weight NOTIFY symbolChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY symbolChanged)

public:
    explicit SoftSymbol(QQuickItem *parent = nullptr);

signals:
    void symbolChanged();

protected:
    void componentComplete() override;
    SoftPatch makePatch(qreal pixelRatio) const override;

private:
    void takeSymbol();

    QString m_name;
    qreal m_size = 12;
    int m_weight = 400;
    QColor m_color = Qt::black;
};

} // namespace tallyview
