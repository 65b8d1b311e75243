#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <QStringList>

namespace tallyview {

/// A system symbol as it is to be drawn. Plain value, any thread.
struct SymbolImage {
    QString name;     ///< for example "square.grid.2x2"
    qreal size = 12;  ///< points, as of a font that the symbol goes with
    int weight = 400; ///< QFont weight: 300 light … 700 bold
    QColor color;

    bool operator==(const SymbolImage &) const = default;

    /// Names that can be drawn, sorted.
    static QStringList names();

    /// Edge of the square box of a symbol of `size` points: even, so that it
    /// sits on whole points in the middle of an even frame.
    static qreal boxEdge(qreal size);

    /// The symbol in its box and a margin around it, premultiplied. A name that
    /// is not known gives a null image.
    QImage render(qreal pixelRatio) const;

private:
    /// Device pixels around the box: room for a bold outline, and one that is
    /// always clear for a turned symbol to fade into.
    int margin(qreal pixelRatio) const;
};

} // namespace tallyview
