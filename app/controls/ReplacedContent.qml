import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// Shows `content` anew whenever `identity` changes: the new content fades in and comes to its place
// and size, while the old one fades out as it was. The first content is there at once. A StackView
// would swallow all input while one replaces the other.
ContentReplacer {
    duration: SoftTheme.replaceDuration
}
