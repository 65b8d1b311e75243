#include "app/platform/DesktopUrlOpener.h"

#include <QProcess>
#include <QProcessEnvironment>

namespace tallyview {

namespace {

/// The token under the names that Wayland and X11 applications look for; what this process itself
/// was started with is spent.
QProcessEnvironment handlerEnvironment(const QString &activationToken) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
        environment.remove(QLatin1String(name));
        if (!activationToken.isEmpty()) {
            environment.insert(QLatin1String(name), activationToken);
        }
    }
    return environment;
}

} // namespace

// QDesktopServices takes a QUrl, which decodes some percent-encodings and rejects some texts, has
// no room for the token, and on some desktops waits for an answer over the bus. A detached program
// gets the text as it is, and whether it finds a handler, hangs or fails is its own affair.
void DesktopUrlOpener::open(const QByteArray &url, const QString &activationToken) {
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({QString::fromUtf8(url)});
    opener.setProcessEnvironment(handlerEnvironment(activationToken));
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    opener.startDetached();
}

} // namespace tallyview
