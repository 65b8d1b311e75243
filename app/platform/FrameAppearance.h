#pragma once

#include <optional>

class QWindow;

namespace tallyview {

/// Tells whoever draws frames whether this program's are to be dark or light or, without a value,
/// the desktop's choice. Works on desktops whose Qt plugin passes it on; does nothing before Qt
/// 6.8.
void chooseFrames(std::optional<bool> dark);

/// Tells the window manager of an X11 desktop whether the frame of `window` is to be dark; does
/// nothing elsewhere. To be repeated for each new native window.
void tellWindowManager(QWindow &window, bool dark);

} // namespace tallyview
