#include "app/platform/DesktopUrlOpener.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>

namespace tallyview {

namespace {

/// Has the token under the names that Wayland and X11 applications look for; the one that this
/// process itself was started with is spent.
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
// no room for the token, and on some desktops waits for an answer over the bus. A separate program
// gets the text as it is, and if it finds no handler, hangs or fails, that stays its problem.
//
// If it runs the handler itself it lives as long as the handler, hence a session of its own. Not
// QProcess::startDetached(): that copies the page tables of this process, which takes tenths of a
// second where start() takes a few milliseconds.
void DesktopUrlOpener::open(const QByteArray &url, const QString &activationToken) {
    auto *launcher = new QProcess(QCoreApplication::instance());
    launcher->setProcessEnvironment(handlerEnvironment(activationToken));
    launcher->setStandardInputFile(QProcess::nullDevice());
    launcher->setStandardOutputFile(QProcess::nullDevice());
    launcher->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(launcher, &QProcess::finished, launcher, &QObject::deleteLater);
    QObject::connect(launcher, &QProcess::errorOccurred, launcher, &QObject::deleteLater);
    launcher->start(QStringLiteral("setsid"),
                    {QStringLiteral("--fork"), QStringLiteral("xdg-open"), QString::fromUtf8(url)});
}

} // namespace tallyview
