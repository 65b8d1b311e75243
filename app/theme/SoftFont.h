#pragma once

#include <QFont>
#include <QObject>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// The fonts of the interface, for QML and C++; main thread only.
///
/// Every list of families ends in "Noto Sans CJK SC" and "Noto Color Emoji". No
/// family before these draws Han characters in other than the Simplified Chinese
/// forms, whatever the locale and the desktop's own font; and emoji that an
/// ordinary font has too, as 😀, are drawn in colour.
class SoftFont : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum Design { System, Rounded, Monospaced };
    Q_ENUM(Design)

    using QObject::QObject;

    /// A font of `size` points (device-independent pixels, fractions allowed).
    /// `weight` is a QFont weight: 300 light … 700 bold.
    Q_INVOKABLE static QFont font(qreal size, int weight = QFont::Normal,
                                  tallyview::SoftFont::Design design = System);

    /// The families tried in turn for a design, worked out once.
    static const QStringList &families(Design design);

    /// The families to use where the desktop asks for `desktopFamily`.
    static QStringList familiesFor(const QString &desktopFamily, Design design);
};

} // namespace tallyview
