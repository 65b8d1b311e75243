import Orvik.Tallyview.Shell
import Orvik.Tallyview.Theme

// One command of a menu with its shortcut.
SoftMenuItem {
    keysText: (action as AppAction)?.keysText ?? ""
}
