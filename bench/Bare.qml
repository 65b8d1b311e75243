import QtQuick

// What the application's window is held against: one of the same size with nothing in it.
Window {
    width: 1440
    height: 900
    color: "#e9ecf2"
}
