#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QMap>
#include <QProcessEnvironment>
#include <QVariant>

#include <chrono>

namespace tallyview {

/// How large a desktop wants texts, as its settings tell it; invalid where they do not.
struct TextSettings {
    QVariant scalingFactor; ///< GNOME's: a number, usually 1
    QVariant font; ///< KDE's general font, as QFont::toString() writes it, usually 10 points
};

/// Asks the desktop portal, for `patience` at most, for the settings that count in `environment`.
/// Blocks.
TextSettings readTextSettings(const QDBusConnection &bus, const QProcessEnvironment &environment,
                              std::chrono::milliseconds patience);

/// Variables, by name, from which Qt takes the scale that the texts are to have, for everything in
/// a window and on top of every other scale; those that `environment` must have besides its own.
/// Factors are held between 0.5 and 3; what is no factor counts as 1, which needs no variable.
///
/// On X11 GNOME itself has its factor in the resolution of texts (Xft.dpi), by which Qt scales
/// windows. On Wayland, which has no such resolution, it becomes one that Qt heeds there alone, so
/// it need not be known which of the two Qt comes to use. KDE's font size is in no resolution.
/// Pure.
QMap<QByteArray, QByteArray> textScaleVariables(const QProcessEnvironment &environment,
                                                const TextSettings &settings);

/// Has windows as large as the desktop's text scaling asks for: a QGuiApplication that is made in
/// the lifetime of this object, before which there is none, adopts for good what the settings are
/// at that time. Programs that are started later do not inherit it. Main thread.
class TextScale {
public:
    /// Asks the session's portal; a desktop that does not answer within `patience` has no text
    /// scaling.
    explicit TextScale(std::chrono::milliseconds patience);
    ~TextScale();
    Q_DISABLE_COPY_MOVE(TextScale)

private:
    QMap<QByteArray, QByteArray> m_replaced; ///< null where there was no variable
};

} // namespace tallyview
