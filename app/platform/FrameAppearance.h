#pragma once

#include <optional>

class QWindow;

namespace tallyview {

/// Tells whoever draws frames that those of this program are to be dark, or light, or, with
/// nothing, as the desktop's own: for the desktops whose Qt plugin passes that on. Needs Qt 6.8
/// and does nothing before.
void chooseFrames(std::optional<bool> dark);

/// Tells the window manager of an X11 desktop whether the frame of `window` is to be dark; does
/// nothing elsewhere. To be repeated for each new native window.
void tellWindowManager(QWindow &window, bool dark);

} // namespace tallyview
