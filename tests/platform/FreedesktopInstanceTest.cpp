#include "app/platform/FreedesktopInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <future>
#include <memory>

using namespace tallyview;
using namespace std::chrono_literals;

namespace {

const QString name = "org.orvik.Tallyview";

QDBusConnection busOf(const QString &process) {
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, process);
}

QString text(const std::expected<ApplicationInstance::Role, QString> &outcome) {
    if (!outcome) {
        return "error: " + outcome.error();
    }
    return *outcome == ApplicationInstance::Role::primary ? "primary" : "handed over";
}

/// What claim() answers in another process, while this one serves the bus.
QString startAnother(const QString &token = {}) {
    auto outcome = std::async(std::launch::async, [&token] {
        const QString role = text(FreedesktopInstance(busOf("another")).claim(token));
        QDBusConnection::disconnectFromBus("another");
        return role;
    });
    [[maybe_unused]] const bool ended =
        QTest::qWaitFor([&] { return outcome.wait_for(0s) == std::future_status::ready; }, 10'000);
    return outcome.get();
}

} // namespace

/// Another process that has the name and never answers.
class SilentApplication : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    SilentApplication() {
        busOf("first").registerObject("/org/orvik/Tallyview", this,
                                      QDBusConnection::ExportAllSlots);
        busOf("first").registerService(name);
        moveToThread(&m_process);
        m_process.start();
    }
    ~SilentApplication() override {
        m_process.quit();
        m_process.wait();
    }

    Q_SLOT void Activate(const QVariantMap &) {
        setDelayedReply(true);
        if (endsWhenAsked) {
            QTimer::singleShot(0, this, [] { QDBusConnection::disconnectFromBus("first"); });
        }
    }

    std::atomic<bool> endsWhenAsked = false;

private:
    QThread m_process;
};

class FreedesktopInstanceTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() {
        for (const char *process : {"first", "launcher"}) {
            QDBusConnection::disconnectFromBus(process);
        }
        QTRY_VERIFY(!busOf("observer").interface()->isServiceRegistered(name));
    }

    void asksTheOneThatRunsUntilItIsGone() {
        auto first = std::make_unique<FreedesktopInstance>(busOf("first"));
        QSignalSpy activated(first.get(), &ApplicationInstance::activated);
        QCOMPARE(text(first->claim("its own leave")), "primary");
        for (const QString token : {"", "launcher_TIME42"}) {
            QCOMPARE(startAnother(token), "handed over");
            QCOMPARE(activated.count(), 1);
            QCOMPARE(activated.takeFirst()[0].toString(), token);
        }
        first.reset();
        QCOMPARE(startAnother(), "primary");
    }

    void doesNotJoinOneThatDoesNotAnswer() {
        SilentApplication silent;
        QElapsedTimer time;
        time.start();
        QVERIFY(text(FreedesktopInstance(busOf("launcher"), 200ms).claim(""))
                    .startsWith("error: Did not receive a reply"));
        QVERIFY(time.elapsed() < 5'000);
        silent.endsWhenAsked = true;
        QCOMPARE(text(FreedesktopInstance(busOf("launcher"), 5s).claim("")), "primary");
    }

    void launchersShowTheWindow() {
        const QVariantMap x11{{"desktop-startup-id", "x"}};
        const QVariantMap both{{"activation-token", "w"}, {"desktop-startup-id", "x"}};
        const QVariantMap odd{{"activation-token", 7}, {"desktop-startup-id", QStringList("x")}};
        const std::tuple<const char *, QVariantList, const char *> calls[] = {
            {"Activate", {odd}, "7"},
            {"Open", {QStringList("file:///a"), x11}, "x"},
            {"ActivateAction", {"quit", QVariantList{1}, both}, "w"},
        };
        FreedesktopInstance first(busOf("first"));
        QSignalSpy activated(&first, &ApplicationInstance::activated);
        QCOMPARE(text(first.claim({})), "primary");
        for (const auto &[method, arguments, token] : calls) {
            QDBusMessage call = QDBusMessage::createMethodCall(
                name, "/org/orvik/Tallyview", "org.freedesktop.Application", method);
            call.setArguments(arguments);
            const QDBusPendingCall pending = busOf("launcher").asyncCall(call);
            QTRY_VERIFY(pending.isFinished());
            QVERIFY(!pending.isError());
            QCOMPARE(activated.takeLast()[0].toString(), token);
            QVERIFY(activated.isEmpty());
        }
    }

    void readsTheLeaveItWasGiven() {
        qunsetenv("XDG_ACTIVATION_TOKEN");
        qputenv("DESKTOP_STARTUP_ID", "x");
        QCOMPARE(FreedesktopInstance::environmentToken(), "x");
        qputenv("XDG_ACTIVATION_TOKEN", "w");
        QCOMPARE(FreedesktopInstance::environmentToken(), "w");
    }
};

QTEST_GUILESS_MAIN(FreedesktopInstanceTest)
#include "FreedesktopInstanceTest.moc"
