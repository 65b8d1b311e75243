import Orvik.Tallyview.Shell
import Orvik.Tallyview.Theme

// A menu of the menu bar.
SoftMenu {
    delegate: AppMenuItem {}
}
