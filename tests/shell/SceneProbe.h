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

    /// The texts, symbols and surfaces inside an item, a line each in the order of the tree:
    ///
    ///     text "全部" 11 600 rounded secondaryInk lines 1
    ///     symbol star 11 600 primaryInk
    ///     surface 310x44 radius 11 raisedSurface rim rimLight shadow softShadowDark 5.04 3.6 3.6
    ///
    /// Colours stand under the names of their roles. An opacity of their own follows as "@0.66".
    /// "circular" are corners that are quarter circles; a rim's width stands where it is not 1.
    static QString looks(const QQuickItem *item, bool dark = false);
    /// Whether `actual` is the lines of `wanted`, in which "*" stands for any text.
    static bool matches(const QString &actual, const QString &wanted);

    QQuickWindow *window = nullptr;
};

} // namespace tallyview::test
