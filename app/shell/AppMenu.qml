import Orvik.Tallyview.Shell
import Orvik.Tallyview.Controls

// A menu of the menu bar.
SoftMenu {
    delegate: AppMenuItem {}
}
