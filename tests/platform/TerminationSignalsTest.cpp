#include "app/platform/TerminationSignals.h"

#include <QSignalSpy>
#include <QTest>

#include <csignal>

using namespace tallyview;

class TerminationSignalsTest : public QObject {
    Q_OBJECT

private slots:
    // One story, since the signals belong to the process.
    void tellsOfSignalsOnce() {
        std::signal(SIGHUP, SIG_IGN);
        const TerminationSignals termination;
        QSignalSpy received(&termination, &TerminationSignals::received);
        std::raise(SIGHUP);
        QTest::qWait(50);
        QCOMPARE(received.count(), 0);
        for (const int signal : {SIGTERM, SIGINT}) {
            std::raise(signal);
            QVERIFY(received.wait());
            struct sigaction next {};
            sigaction(signal, nullptr, &next);
            QVERIFY(next.sa_handler == SIG_DFL);
        }
        QCOMPARE(received.count(), 2);
    }
};

QTEST_GUILESS_MAIN(TerminationSignalsTest)
#include "TerminationSignalsTest.moc"
