#pragma once

#include <QStringList>

namespace tallyview {

/// The buttons at either end of a window's title bar, each from left to right: "minimize",
/// "maximize" and "close", each at most once. Plain value, any thread.
struct WindowButtons {
    QStringList left;
    QStringList right;

    bool operator==(const WindowButtons &) const = default;

    /// What a text like "appmenu:minimize,close" stands for: two lists with a colon between them.
    /// Names of other things in a title bar are skipped.
    static WindowButtons fromLayout(const QString &layout);
    /// For a desktop that names none.
    static WindowButtons all();
};

} // namespace tallyview
