#pragma once

#include <QString>

namespace tallyview {

/// Whether a folder of device files, as /dev, has a graphics processor that draws for windows.
bool hasGraphicsProcessor(const QString &devices);

/// Makes Qt Quick's software renderer draw all windows if there is no graphics processor, unless
/// the environment names a renderer. To be called before the first window.
///
/// Without a graphics processor, OpenGL draws the whole window for every frame of a pulse and takes
/// half a processor; the software renderer draws only what changed.
void chooseSceneRenderer();

} // namespace tallyview
