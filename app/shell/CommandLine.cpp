#include "app/shell/CommandLine.h"

namespace tallyview {

namespace {

const QString usage = QStringLiteral("Usage: orvik-tallyview [OPTION]\n"
                                     "\n"
                                     "  --background  start without a window and watch\n"
                                     "  --help        tell this and end\n"
                                     "  --version     tell the version and end\n"
                                     "\n"
                                     "Qt's own options are understood too.\n");
const QString background = QStringLiteral("--background");

} // namespace

std::optional<QString> commandLineAnswer(const QStringList &arguments) {
    if (arguments.contains(QLatin1String("--help"))) {
        return usage;
    }
    if (arguments.contains(QLatin1String("--version"))) {
        return QStringLiteral("orvik-tallyview " TALLYVIEW_VERSION "\n");
    }
    return std::nullopt;
}

bool isInBackground(const QStringList &arguments) { return arguments.contains(background); }

std::expected<Start, QString> readCommandLine(const QStringList &arguments) {
    Start start = Start::withWindow;
    for (const QString &argument : arguments) {
        if (argument != background) {
            return std::unexpected(
                QStringLiteral("orvik-tallyview: what is \"%1\"?\n%2").arg(argument, usage));
        }
        start = Start::inBackground;
    }
    return start;
}

} // namespace tallyview
