#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QMap>
#include <QProcessEnvironment>
#include <QVariant>

#include <chrono>

namespace tallyview {

/// How large a desktop wants texts, according to its settings; invalid if they do not say.
struct TextSettings {
    QVariant scalingFactor; ///< GNOME's: a number, usually 1
    QVariant font; ///< KDE's general font, as QFont::toString() writes it, usually 10 points
};

/// Asks the desktop portal for the settings that count in `environment`. Blocks, for `patience` at
/// most.
TextSettings readTextSettings(const QDBusConnection &bus, const QProcessEnvironment &environment,
                              std::chrono::milliseconds patience);

/// The variables, by name, to add to `environment` so that Qt scales everything in a window by the
/// factor wanted for texts, on top of every other scale. Factors are kept between 0.5 and 3;
/// anything that is not a factor counts as 1, which needs no variable.
///
/// On X11 GNOME itself puts its factor into the resolution of texts (Xft.dpi), by which Qt scales
/// windows. Wayland has no such resolution, so the factor becomes one that Qt heeds only there, and
/// it does not matter which of the two Qt will use. KDE's font size is in no resolution. Pure.
QMap<QByteArray, QByteArray> textScaleVariables(const QProcessEnvironment &environment,
                                                const TextSettings &settings);

/// Makes windows as large as the desktop's text scaling asks for: the QGuiApplication, which is to
/// be made during this object's lifetime and not before, adopts the settings of that time for good.
/// Programs started later do not inherit them. Main thread.
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
