import Orvik.Tallyview.Drawing

/// A small round spot, `diameter` points wide.
SoftSurface {
    required property real diameter

    width: diameter
    height: diameter
    radius: diameter / 2
    continuous: false
}
