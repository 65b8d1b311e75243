#pragma once

#include <QList>
#include <QRect>
#include <QSize>

namespace tallyview {

/// `frame` brought onto the screen on which most of it lies, or the first if it lies on none: no
/// larger than that screen, though never smaller than `minimum`, and moved until all of it, or at
/// least its top left corner, shows. `screens` are the parts of screens that windows may cover;
/// without any the frame stays. Pure.
QRect fittedFrame(const QRect &frame, const QSize &minimum, const QList<QRect> &screens);

} // namespace tallyview
