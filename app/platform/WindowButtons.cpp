#include "app/platform/WindowButtons.h"

namespace tallyview {

namespace {

QStringList buttons(const QString &names) {
    const QStringList known = WindowButtons::all().right;
    QStringList found;
    for (const QString &name : names.split(u',')) {
        if (known.contains(name.trimmed())) {
            found.append(name.trimmed());
        }
    }
    return found;
}

} // namespace

WindowButtons WindowButtons::fromLayout(const QString &layout) {
    WindowButtons shown{buttons(layout.section(u':', 0, 0)), buttons(layout.section(u':', 1))};
    shown.left.removeDuplicates();
    shown.right.removeDuplicates();
    shown.right.removeIf([&](const QString &name) { return shown.left.contains(name); });
    return shown;
}

WindowButtons WindowButtons::all() {
    return {{}, {QStringLiteral("minimize"), QStringLiteral("maximize"), QStringLiteral("close")}};
}

} // namespace tallyview
