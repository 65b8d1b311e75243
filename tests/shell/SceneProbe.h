#pragma once

#include <QColor>
#include <QQuickItem>
#include <QQuickWindow>

#include <functional>

namespace tallyview::test {

/// Reads what a window shows. Types are QML types by their file's name.
class SceneProbe {
public:
    /// Lets the adapters and the scene follow the model.
    void settle() const;

    static QString typeOf(const QQuickItem *item);
    /// The visible items of a type, in the order of the tree.
    QList<QQuickItem *> items(const QString &type) const;
    QQuickItem *item(const QString &type) const { return items(type).value(0); }
    /// The first visible item of a type whose property has a value.
    QQuickItem *found(const QString &type, const char *property, const QString &value) const;
    QQuickItem *text(const QString &text) const { return found("SoftText", "text", text); }
    QQuickItem *button(const QString &label) const {
        return found("SoftIconButton", "label", label);
    }
    /// The texts inside an item, bars between them.
    static QString texts(const QQuickItem *item);

    /// Where an item stands in the window.
    static QRectF rect(const QQuickItem *item);
    QColor pixel(int x, int y) const;
    void click(const QQuickItem *item) const;

    /// The texts, symbols and surfaces inside an item, in the order of the tree:
    ///
    ///     Text 全部 11 600 1 2 secondaryInk
    ///     Symbol star 11 600 primaryInk
    ///     Surface 30 30 9 true raisedSurface hairline 1 shadow softShadowDark 3 2 2 shadow …
    ///
    /// The number before the colour of a text is the greatest of its lines.
    ///
    /// Colours stand under their names in the light theme. An opacity of their own follows as
    /// "@0.66".
    static QStringList looks(const QQuickItem *item);

    QQuickWindow *window = nullptr;
};

} // namespace tallyview::test
