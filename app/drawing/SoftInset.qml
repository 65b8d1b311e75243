import QtQuick
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A flat well. Its shadows fall outside its own outline, to which the well is
/// clipped, so none of them shows and none is drawn. Content stays inside by
/// its layout: nothing here clips it.
SoftSurface {
    fill: SoftTheme.insetSurface
}
