#pragma once

#include <QString>

namespace tallyview {

/// Whether a folder of device files, as /dev, has a graphics processor that draws for windows.
bool hasGraphicsProcessor(const QString &devices);

/// Has windows drawn by Qt Quick's software renderer where there is no graphics processor, unless
/// the environment names a renderer. Before the first window.
///
/// OpenGL without a graphics processor draws the whole window for every frame of a pulse, with
/// half a processor; the software renderer draws what changed.
void chooseSceneRenderer();

} // namespace tallyview
