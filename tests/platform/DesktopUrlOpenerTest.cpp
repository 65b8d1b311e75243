#include "app/platform/DesktopUrlOpener.h"

#include "tests/support/TemporaryHome.h"

#include <QFile>
#include <QTest>

using namespace tallyview;

/// Runs the desktop's own xdg-open with a handler registered in a home of its own.
class DesktopUrlOpenerTest : public QObject {
    Q_OBJECT

    QByteArray opened() const {
        QFile file(QString::fromStdString(m_home.path("opened")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const tests::TemporaryHome m_home;

private slots:
    void initTestCase() {
        const std::string home = m_home.path();
        for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
            qputenv(name, home.c_str());
        }
        qputenv("XDG_CURRENT_DESKTOP", "X-Generic");
        qputenv("DISPLAY", ":none"); // xdg-open asks a handler only where there is a display
        qputenv("BROWSER", "true");
        qputenv("XDG_ACTIVATION_TOKEN", "spent");
        std::filesystem::create_directory(m_home.path("applications"));
        m_home.write("mimeapps.list",
                     "[Default Applications]\nx-scheme-handler/orvik=agent.desktop\n");
        m_home.write("applications/agent.desktop",
                     "[Desktop Entry]\nType=Application\nName=Agent\nExec=" + home + "/agent %u\n");
        const std::string agent = m_home.write(
            "agent",
            "#!/bin/sh\n"
            // never gone on with by a caller that waits for the handler
            "until test -e \"$HOME/go\"; do sleep 0.05; done\n"
            "printf '%s|%s|%s' \"$#\" \"$1\" \"${XDG_ACTIVATION_TOKEN-none}\" >\"$HOME/part\"\n"
            "mv \"$HOME/part\" \"$HOME/opened\"\n");
        std::filesystem::permissions(agent, std::filesystem::perms::owner_all);
    }

    void hasTheHandlerOpenTheUrl() {
        const QByteArray url = "orvik://threads/~!$&'()*+,-./:=@_;//../%00%25%E4%BB%BB%7E";
        for (const QByteArray token : {"", "token_TIME42"}) {
            std::filesystem::remove(m_home.path("go"));
            DesktopUrlOpener().open(url, token);
            m_home.write("go", "");
            const QByteArray expected = "1|" + url + "|" + (token.isEmpty() ? "none" : token);
            QTRY_COMPARE_WITH_TIMEOUT(opened(), expected, 10'000);
        }
    }
};

QTEST_GUILESS_MAIN(DesktopUrlOpenerTest)
#include "DesktopUrlOpenerTest.moc"
