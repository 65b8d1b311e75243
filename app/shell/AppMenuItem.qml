import Orvik.Tallyview.Shell
import Orvik.Tallyview.Controls

// One command of a menu with its shortcut.
SoftMenuItem {
    keysText: (action as AppAction)?.keysText ?? ""
}
