#include "app/platform/DesktopUrlOpener.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace tallyview;

/// Runs the desktop's own xdg-open with a handler registered in a home of its own.
class DesktopUrlOpenerTest : public QObject {
    Q_OBJECT

    QString path(const QString &name) const { return m_home->filePath(name); }
    void write(const QString &name, const QByteArray &text) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QByteArray read(const QString &name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_home;
    const QByteArray m_programs = qgetenv("PATH");

private slots:
    void init() {
        m_home = std::make_unique<QTemporaryDir>();
        const QByteArray home = m_home->path().toUtf8();
        for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
            qputenv(name, home);
        }
        qputenv("PATH", m_programs);
        qputenv("XDG_CURRENT_DESKTOP", "X-Generic");
        qputenv("DISPLAY", ":none"); // xdg-open asks a handler only where there is a display
        qputenv("BROWSER", "true");
        qputenv("XDG_ACTIVATION_TOKEN", "spent");
        QVERIFY(QDir(m_home->path()).mkdir("applications"));
        write("mimeapps.list", "[Default Applications]\nx-scheme-handler/orvik=agent.desktop\n");
        write("applications/agent.desktop",
              "[Desktop Entry]\nType=Application\nName=Agent\nExec=" + home + "/agent %u\n");
        write("agent",
              "#!/bin/sh\n"
              // never gone on with by a caller that waits for the handler
              "until test -e \"$HOME/go\"; do sleep 0.05; done\n"
              "printf '%s|%s|%s' \"$#\" \"$1\" \"${XDG_ACTIVATION_TOKEN-none}\" >\"$HOME/part\"\n"
              "mv \"$HOME/part\" \"$HOME/opened\"\n");
        QVERIFY(QFile::setPermissions(path("agent"), QFile::ReadOwner | QFile::ExeOwner));
    }

    void hasTheHandlerOpenTheUrl() {
        const QByteArray url = "orvik://threads/~!$&'()*+,-./:=@_;//../%00%25%E4%BB%BB%7E";
        for (const QByteArray token : {"", "token_TIME42"}) {
            init();
            DesktopUrlOpener().open(url, token);
            write("go", "");
            const QByteArray expected = "1|" + url + "|" + (token.isEmpty() ? "none" : token);
            QTRY_COMPARE_WITH_TIMEOUT(read("opened"), expected, 10'000);
        }
    }

    void ignoresMissingParts() {
        write("mimeapps.list", "");
        DesktopUrlOpener().open("orvik://threads/nobody", QString());
        qputenv("PATH", "/nonexistent");
        DesktopUrlOpener().open("orvik://threads/nothing", QString());
        QTest::qWait(500);
        QVERIFY(!QFile::exists(path("opened")));
    }
};

QTEST_GUILESS_MAIN(DesktopUrlOpenerTest)
#include "DesktopUrlOpenerTest.moc"
