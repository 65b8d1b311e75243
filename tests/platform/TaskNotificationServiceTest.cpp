#include "app/model/TaskNotificationService.h"

#include "app/platform/FreedesktopNotificationCenter.h"
#include "app/platform/IniUserDefaults.h"
#include "app/platform/UrlOpener.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

#include <memory>
#include <optional>

using namespace tallyview;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class RecordingOpener : public UrlOpener {
public:
    void open(const QByteArray &url, const QString &activationToken) override {
        opened.append(QString::fromUtf8(url) + activationToken);
    }

    QStringList opened;
};

/// The application's side of a session.
struct Session {
    QTemporaryDir folder;
    FreedesktopNotificationCenter center{300ms};
    IniUserDefaults defaults{folder.filePath("tallyview.conf")};
    RecordingOpener opener;
    Instant now{1'700'000'000.5s};
    TaskNotificationService service{center, defaults, opener, [this] { return now += 1s; }};
    QString clicked; ///< the notices, the unique part of each as "ID"

    Session() {
        service.configure();
        QObject::connect(&center, &NotificationCenter::activated, [this](const auto &activation) {
            static const QRegularExpression unique("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$");
            QString identifier = activation.identifier;
            clicked += activation.groupingKey + ':' + identifier.replace(unique, "ID ");
        });
    }

    /// Waits for the outcome of one delivery after what `start` does; its error.
    QString delivery(const std::function<void()> &start) {
        const QVariant before = defaults.value("notificationLastDeliveryAttempt");
        start();
        const bool ended = QTest::qWaitFor(
            [&] { return defaults.value("notificationLastDeliveryAttempt") != before; });
        return ended ? defaults.text("notificationDeliveryError").value_or("no text")
                     : "no outcome";
    }
    QString delivery(const QString &id, const QString &title = "Build it",
                     const QString &project = "tallyview") {
        return delivery([&] {
            service.notifyCompletion(ThreadRecord({.id = id.toStdString(),
                                                   .title = title.toStdString(),
                                                   .project = project.toStdString()}));
        });
    }
    QString permission() const {
        return defaults.text("notificationAuthorizationStatus").value_or("") + " " +
               defaults.text("notificationAuthorizationGranted").value_or("");
    }
};

} // namespace

/// A notification daemon on a bus connection of its own, from construction to destruction.
class FakeNotificationDaemon : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit FakeNotificationDaemon(QStringList capabilities = {"actions", "body", "body-markup"})
        : m_capabilities(std::move(capabilities)) {
        m_bus.registerObject("/org/freedesktop/Notifications", this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService("org.freedesktop.Notifications");
    }
    ~FakeNotificationDaemon() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    /// What a user does; ids count from 1.
    void click(uint id, const QString &token = {}) {
        if (!token.isEmpty()) {
            emit ActivationToken(id, token);
        }
        emit ActionInvoked(id, "default");
    }
    /// Leaves its place to another daemon and lives on.
    void giveUpItsName() { m_bus.unregisterService("org.freedesktop.Notifications"); }
    /// Answers the calls left hanging, as if now done.
    void wakeUp() {
        hangsIn.clear();
        for (const QDBusMessage &call : std::exchange(hanging, {})) {
            m_bus.send(call.member() == "Notify" ? call.createReply(uint(notices.size()))
                                                 : call.createReply(m_capabilities));
        }
    }

    QString failure;                       ///< the answer to every notice
    QString hangsIn;                       ///< the call that it does not answer
    std::optional<QVariantList> oddAnswer; ///< which that call then gets at once
    QStringList notices; ///< application, summary, body, actions, hints and expiry, bars between
    QList<uint> closed;
    QList<QDBusMessage> hanging; ///< not yet answered

    Q_SLOT QStringList GetCapabilities() {
        hangIfAsked();
        return m_capabilities;
    }
    Q_SLOT uint Notify(const QString &applicationName, uint, const QString &,
                       const QString &summary, const QString &body, const QStringList &actions,
                       const QVariantMap &hints, int expiry) {
        if (!failure.isEmpty()) {
            sendErrorReply("org.example.Full", failure);
            return 0;
        }
        QStringList parts{applicationName, summary, body, actions.join(u',')};
        for (const auto &[key, value] : hints.asKeyValueRange()) {
            parts.append(key + '=' + value.toString());
        }
        notices.append(parts.join(u'|') + '|' + QString::number(expiry));
        hangIfAsked();
        return uint(notices.size());
    }
    Q_SLOT void CloseNotification(uint id) { closed.append(id); }

signals:
    void ActionInvoked(uint id, const QString &action);
    void ActivationToken(uint id, const QString &token);

private:
    void hangIfAsked() {
        if (message().member() != hangsIn) {
            return;
        }
        setDelayedReply(true);
        if (oddAnswer) {
            m_bus.send(message().createReply(*oddAnswer));
        } else {
            hanging.append(message());
        }
    }

    QDBusConnection m_bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QUuid::createUuid().toString());
    QStringList m_capabilities;
};

class TaskNotificationServiceTest : public QObject {
    Q_OBJECT

private slots:
    // first, while the bus has yet to learn every type
    void triesAgainAfterFailures() {
        Session session;
        QTRY_COMPARE(session.permission(), "1 false");
        QVERIFY(!session.defaults.text("notificationAuthorizationError")->isEmpty());
        QCOMPARE(session.defaults.text("notificationDeliveryError"), std::nullopt);
        for (int time = 0; time < 2; ++time) {
            QVERIFY(session.delivery("t").contains("org.freedesktop.Notifications"));
            FakeNotificationDaemon daemon;
            QCOMPARE(session.delivery("t"), "");
            daemon.failure = "The screen is full";
            QCOMPARE(session.delivery("t"), "The screen is full");
        }
    }

    void showsTextsAsTheyAre() {
        const QString text =
            u"<b>x</b> R&amp;D 'a' \"b\"\nc\td\u001b[1m 🎉 👩‍💻"_s + QString(5000, u'<');
        const QString plain = QString(text).replace(u'\u001b', u' ');
        const std::pair<QString, QString> cases[] = {
            {"body", plain}, {"body-markup", plain.toHtmlEscaped().replace("&quot;", "\"")}};
        for (const auto &[capability, shown] : cases) {
            FakeNotificationDaemon daemon({capability});
            Session session;
            QCOMPARE(session.delivery("t", text, text), "");
            QCOMPARE(daemon.notices[0].section(u'|', 2, 2), shown + "\n" + shown);
        }
    }

    void opensEachThreadOnce() {
        FakeNotificationDaemon daemon;
        Session session;
        QTRY_COMPARE(session.permission(), "2 true");
        QCOMPARE(session.delivery("a b/c"), "");
        QCOMPARE(session.defaults.text("notificationLastDeliveryAttempt"),
                 "2023-11-14T22:13:21.500Z");
        QCOMPARE(session.delivery(u"任务"_s), "");
        QCOMPARE(session.delivery("a b/c"), "");
        QCOMPARE(session.delivery([&] { session.service.sendTestNotification(); }), "");
        const QString rest = "|desktop-entry=org.orvik.Tallyview|sound-name=message-new-instant|-1";
        QCOMPARE(daemon.notices[0], u"Orvik Tallyview|Orvik 任务已完成|tallyview\nBuild it|"
                                    "default,在 Orvik 中打开"_s +
                                        rest);
        QCOMPARE(daemon.notices[3], u"Orvik Tallyview|Orvik Tallyview 通知已开启|"
                                    "任务运行结束后，会在这里提醒你。|default,"_s +
                                        rest);
        emit daemon.ActionInvoked(1, "settings");
        daemon.click(5);
        daemon.click(4);
        daemon.click(3, "#token");
        daemon.click(2);
        daemon.click(3, "#again");
        daemon.click(1);
        QTRY_COMPARE(session.opener.opened, (QStringList{"orvik://threads/a%20b/c#token",
                                                         "orvik://threads/%E4%BB%BB%E5%8A%A1",
                                                         "orvik://threads/a%20b/c"}));
        QTRY_COMPARE(daemon.closed, (QList<uint>{4, 3, 2, 1}));
        QCOMPARE(session.clicked,
                 u":orvik-task-notification-test-ID a b/c:orvik-task-complete-a b/c-ID "
                 "任务:orvik-task-complete-任务-ID a b/c:orvik-task-complete-a b/c-ID "_s);
    }

    void outlivesAHangingDaemon() {
        for (const QString call : {"Notify", "GetCapabilities"}) {
            const bool isShown = call == "Notify";
            FakeNotificationDaemon daemon;
            daemon.hangsIn = call;
            Session session;
            QVERIFY(!session.delivery("slow").isEmpty());
            daemon.wakeUp();
            QCOMPARE(session.delivery("next"), "");
            QCOMPARE(daemon.notices.size(), isShown ? 2 : 1);
            daemon.click(1);
            QTRY_COMPARE(session.opener.opened,
                         QStringList(isShown ? "orvik://threads/slow" : "orvik://threads/next"));
        }
    }

    // Whatever it answers, a daemon that answers shows notices: as plain text, and one whose id it
    // keeps to itself leads nowhere. One that leaves without a successor has shown nothing.
    void livesWithAnyAnswer() {
        const QVariantList answers[] = {
            {},
            {"actions"},
            {QVariantMap{{"id", 1}}},
            {-1, true},
            {QVariant::fromValue(QDBusVariant(QStringList("actions")))}};
        for (const QString call : {"GetCapabilities", "Notify"}) {
            auto daemon = std::make_unique<FakeNotificationDaemon>(QStringList());
            Session session;
            daemon->hangsIn = call;
            for (const QVariantList &answer : answers) {
                daemon->oddAnswer = answer;
                QCOMPARE(session.delivery("odd", "R&D"), "");
                QCOMPARE(daemon->notices.takeLast().section(u'|', 2, 2), "tallyview\nR&D");
            }
            daemon->hangsIn.clear();
            QCOMPARE(session.delivery("next"), "");
            daemon->click(1);
            QTRY_COMPARE(session.opener.opened, QStringList("orvik://threads/next"));
            daemon->hangsIn = call;
            daemon->oddAnswer.reset();
            const QString error = session.delivery([&] {
                session.service.notifyCompletion(ThreadRecord({.id = "t"}));
                QTRY_VERIFY(!daemon->hanging.isEmpty());
                daemon.reset();
            });
            QVERIFY2(error.contains("reply") || error.contains("provided"), qPrintable(error));
        }
    }

    void aFloodOfSignalsHidesNoClick() {
        FakeNotificationDaemon daemon;
        FakeNotificationDaemon stranger;
        Session session;
        QCOMPARE(session.delivery("t"), "");
        for (uint number = 0; number < 10'000; ++number) {
            emit daemon.ActionInvoked(number + 2, "default");
            emit stranger.ActionInvoked(1, "default");
            emit stranger.ActivationToken(1, "#stranger");
        }
        daemon.click(1, "#token");
        QTRY_COMPARE_WITH_TIMEOUT(session.opener.opened, QStringList("orvik://threads/t#token"),
                                  30'000);
    }

    // A daemon leaves with a notice in its hands, which the next one shows in its own way.
    void goesToTheDaemonThatTakesOver() {
        for (const QString call : {"Notify", "GetCapabilities"}) {
            auto daemon = std::make_unique<FakeNotificationDaemon>();
            Session session;
            QTRY_COMPARE(session.permission(), "2 true");
            daemon->hangsIn = call;
            const QString error = session.delivery([&] {
                session.service.notifyCompletion(ThreadRecord({.id = "t", .title = "R&D"}));
                QTRY_VERIFY(!daemon->hanging.isEmpty());
                daemon.reset();
                daemon = std::make_unique<FakeNotificationDaemon>(QStringList{"body"});
            });
            QCOMPARE(error, "");
            QCOMPARE(daemon->notices.size(), 1);
            QCOMPARE(daemon->notices[0].section(u'|', 2, 2), "R&D");
            daemon->click(1, "#token");
            QTRY_COMPARE(session.opener.opened, QStringList{"orvik://threads/t#token"});
        }
    }

    void tellsDaemonsApart() {
        FakeNotificationDaemon first;
        Session session;
        QCOMPARE(session.delivery("first"), "");
        first.giveUpItsName();
        FakeNotificationDaemon second;
        second.click(1, "#stranger");
        QCOMPARE(session.delivery("second"), "");
        second.click(1);
        first.click(1);
        QTRY_COMPARE(session.opener.opened,
                     (QStringList{"orvik://threads/second", "orvik://threads/first"}));
        QTRY_COMPARE(first.closed, QList<uint>{1});
        QCOMPARE(second.closed, QList<uint>{1});
    }
};

QTEST_GUILESS_MAIN(TaskNotificationServiceTest)
#include "TaskNotificationServiceTest.moc"
