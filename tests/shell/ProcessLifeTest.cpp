#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The program itself, started as a user's desktop starts it, on a bus and a home of its own.
class ProcessLifeTest : public QObject {
    Q_OBJECT

    const QString m_program = qEnvironmentVariable("TALLYVIEW_PROGRAM");

    static bool hasName() {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(
            "org.orvik.Tallyview");
    }

private slots:
    void init() {
        static QTemporaryDir home;
        for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"}) {
            qputenv(name, home.path().toUtf8());
        }
        QFile::remove(home.filePath("orvik/tallyview.conf"));
    }

    void oneRunsUntilTheSessionEnds() {
        QProcess first;
        first.start(m_program);
        QTRY_VERIFY_WITH_TIMEOUT(hasName(), 30'000);
        QProcess second;
        second.start(m_program);
        QVERIFY(second.waitForFinished());
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(first.state(), QProcess::Running);
        // A start while the first one ends takes its place.
        first.terminate();
        second.start(m_program);
        QVERIFY(first.waitForFinished());
        QTRY_VERIFY_WITH_TIMEOUT(hasName(), 30'000);
        QTest::qWait(300);
        QCOMPARE(second.state(), QProcess::Running);
        second.terminate();
        QVERIFY(second.waitForFinished());
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(first.exitStatus(), QProcess::NormalExit);
        QCOMPARE(first.exitCode(), 0);
        QCOMPARE(first.readAllStandardError(), "");
        QTRY_VERIFY(!hasName());
    }

    void runsWithoutASessionBus() {
        QProcess alone;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        alone.setProcessEnvironment(environment);
        alone.start(m_program);
        // It runs when it has noted that it may not notify.
        QFile settings(qEnvironmentVariable("XDG_CONFIG_HOME") + "/orvik/tallyview.conf");
        QTRY_VERIFY_WITH_TIMEOUT(settings.size() > 0, 30'000);
        alone.terminate();
        QVERIFY(alone.waitForFinished());
        QCOMPARE(alone.exitStatus(), QProcess::NormalExit);
        QCOMPARE(alone.exitCode(), 0);
    }
};

QTEST_GUILESS_MAIN(ProcessLifeTest)
#include "ProcessLifeTest.moc"
