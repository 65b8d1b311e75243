#include "app/model/TaskNotificationService.h"

#include "app/platform/FreedesktopNotificationCenter.h"
#include "app/platform/IniUserDefaults.h"
#include "app/platform/UrlOpener.h"
#include "tests/platform/FakeNotificationDaemon.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

using namespace tallyview;
using namespace std::chrono_literals;

namespace {

class RecordingOpener : public UrlOpener {
public:
    void open(const QByteArray &url, const QString &activationToken) override {
        opened.append(QString::fromUtf8(url) + activationToken);
    }

    QStringList opened;
};

ThreadRecord record(const QString &id, const QString &title = "Build it",
                    const QString &project = "tallyview") {
    ThreadRecord::Fields fields;
    fields.id = id.toStdString();
    fields.title = title.toStdString();
    fields.project = project.toStdString();
    return ThreadRecord(fields);
}

/// The application's side of a session, its clock standing still.
struct Session {
    QTemporaryDir folder;
    FreedesktopNotificationCenter center{300ms};
    IniUserDefaults defaults{folder.filePath("tallyview.conf")};
    RecordingOpener opener;
    Instant now{1'700'000'000.5s};
    TaskNotificationService service{center, defaults, opener, [this] { return now; }};
    QSignalSpy activations{&center, &NotificationCenter::activated};

    Session() { service.configure(); }

    /// Waits for the outcome of one delivery after what `start` does; its error.
    QString delivery(const std::function<void()> &start) {
        now += 1s;
        start();
        const QDateTime attempt = QDateTime::fromMSecsSinceEpoch(
            std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count());
        if (!QTest::qWaitFor([&] {
                return defaults.value("notificationLastDeliveryAttempt").toDateTime() == attempt;
            })) {
            return "no outcome";
        }
        return defaults.text("notificationDeliveryError").value_or("no text");
    }
    QString delivery(const ThreadRecord &thread) {
        return delivery([&] { service.notifyCompletion(thread); });
    }
};

} // namespace

class TaskNotificationServiceTest : public QObject {
    Q_OBJECT

private slots:
    // first, while the bus has yet to learn every type
    void triesAgainAfterFailures() {
        Session session;
        QVERIFY(session.delivery(record("t")).contains("org.freedesktop.Notifications"));
        auto daemon = std::make_unique<FakeNotificationDaemon>();
        QCOMPARE(session.delivery(record("t")), "");
        daemon->mood = FakeNotificationDaemon::Mood::failing;
        QCOMPARE(session.delivery(record("t")), "The screen is full");
        daemon->mood = FakeNotificationDaemon::Mood::willing;
        QCOMPARE(session.delivery(record("t")), "");
        daemon.reset();
        QVERIFY(!session.delivery(record("t")).isEmpty());
        daemon = std::make_unique<FakeNotificationDaemon>();
        QCOMPARE(session.delivery(record("t")), "");
        daemon->click(1);
        QTRY_COMPARE(session.opener.opened, QStringList{"orvik://threads/t"});
    }

    void postsACompletion() {
        FakeNotificationDaemon daemon;
        Session session;
        QCOMPARE(session.delivery(record("t1", "Build it", "tallyview")), "");
        QCOMPARE(daemon.notices.size(), 1);
        const FakeNotificationDaemon::Notice notice = daemon.notices.constFirst();
        QCOMPARE(notice.applicationName, "Orvik Tallyview");
        QCOMPARE(notice.summary, u"Orvik 任务已完成"_qs);
        QCOMPARE(notice.body, "tallyview\nBuild it");
        QCOMPARE(notice.actions.value(0), "default");
        QCOMPARE(notice.actions.size(), 2);
        QCOMPARE(notice.hints, (QVariantMap{{"desktop-entry", "org.orvik.Tallyview"},
                                            {"sound-name", "message-new-instant"}}));
        QCOMPARE(notice.expiry, -1);
    }

    void postsATest() {
        FakeNotificationDaemon daemon;
        Session session;
        QCOMPARE(session.delivery([&] { session.service.sendTestNotification(); }), "");
        QCOMPARE(daemon.notices.constFirst().summary, u"Orvik Tallyview 通知已开启"_qs);
        QCOMPARE(daemon.notices.constFirst().body, u"任务运行结束后，会在这里提醒你。"_qs);
        daemon.click(1);
        QTRY_COMPARE(daemon.closed, QList<uint>{1});
        const auto activation = session.activations.constFirst().constFirst();
        QVERIFY(
            QRegularExpression("^orvik-task-notification-test-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]"
                               "{12}$")
                .match(activation.value<NotificationActivation>().identifier)
                .hasMatch());
        QCOMPARE(session.opener.opened, QStringList());
    }

    void showsTextsAsTheyAre_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("asMarkup");
        const auto row = [](const char *name, const QString &text, const QString &asMarkup) {
            QTest::newRow(name) << text << asMarkup;
        };
        row("markup", "<b>x</b> a<b>c", "&lt;b&gt;x&lt;/b&gt; a&lt;b&gt;c");
        row("entity", "R&amp;D", "R&amp;amp;D");
        row("quotes", "'a' \"b\"", "'a' \"b\"");
        row("line breaks", "a\nb\tc", "a\nb\tc");
        row("controls", u"a\u001b[1mb\0c"_qs, "a [1mb c");
        row("emoji", u"🎉 完成 👩‍💻"_qs, u"🎉 完成 👩‍💻"_qs);
        row("long", QString(5000, u'<'), QString("&lt;").repeated(5000));
    }

    void showsTextsAsTheyAre() {
        QFETCH(const QString, text);
        QFETCH(QString, asMarkup);
        for (const bool markup : {true, false}) {
            FakeNotificationDaemon daemon(markup ? QStringList{"body", "body-markup"}
                                                 : QStringList{"body"});
            Session session;
            QCOMPARE(session.delivery(record("t", text, text)), "");
            const QString plain = QString(text).replace(u'\u001b', u' ').replace(QChar(), u' ');
            const QString expected = markup ? asMarkup : plain;
            QCOMPARE(daemon.notices.constFirst().body, expected + "\n" + expected);
        }
    }

    void recordsThePermission_data() {
        QTest::addColumn<bool>("daemonRuns");
        QTest::newRow("daemon") << true;
        QTest::newRow("no daemon") << false;
    }

    void recordsThePermission() {
        QFETCH(const bool, daemonRuns);
        std::optional<FakeNotificationDaemon> daemon;
        if (daemonRuns) {
            daemon.emplace();
        }
        const Session session;
        const auto kept = [&](const char *key) { return session.defaults.text(key); };
        QTRY_COMPARE(kept("notificationAuthorizationStatus"), daemonRuns ? "2" : "1");
        QCOMPARE(kept("notificationAuthorizationGranted"), daemonRuns ? "true" : "false");
        QCOMPARE(kept("notificationAuthorizationError")->isEmpty(), daemonRuns);
        QCOMPARE(kept("notificationDeliveryError"), std::nullopt);
    }

    void opensEachThreadOnce() {
        FakeNotificationDaemon daemon;
        Session session;
        QCOMPARE(session.delivery(record("a b/c")), "");
        QCOMPARE(session.delivery(record(u"任务"_qs)), "");
        QCOMPARE(session.delivery(record("a b/c")), "");
        daemon.click(3, "#token");
        daemon.click(2);
        daemon.click(3, "#again");
        QTRY_COMPARE(session.opener.opened, (QStringList{"orvik://threads/a%20b/c#token",
                                                         "orvik://threads/%E4%BB%BB%E5%8A%A1"}));
        QTRY_COMPARE(daemon.closed, (QList<uint>{3, 2}));
        daemon.click(1);
        QTRY_COMPARE(daemon.closed, (QList<uint>{3, 2, 1}));
        QCOMPARE(session.opener.opened.size(), 3);

        QStringList identifiers;
        for (const QList<QVariant> &arguments : std::as_const(session.activations)) {
            identifiers.append(arguments.constFirst().value<NotificationActivation>().identifier);
        }
        QCOMPARE(identifiers.removeDuplicates(), 0);
        QCOMPARE(session.activations[0][0].value<NotificationActivation>().groupingKey, "a b/c");
        QCOMPARE(session.activations[1][0].value<NotificationActivation>().groupingKey, u"任务"_qs);
        QVERIFY(
            QRegularExpression("^orvik-task-complete-a b/c-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]"
                               "{12}$")
                .match(identifiers.constLast())
                .hasMatch());
    }

    void ignoresOtherClicks() {
        FakeNotificationDaemon daemon;
        Session session;
        QCOMPARE(session.delivery(record("settings")), "");
        QCOMPARE(session.delivery(record("t")), "");
        emit daemon.ActionInvoked(1, "settings");
        daemon.click(3);
        daemon.click(2);
        QTRY_COMPARE(daemon.closed, QList<uint>{2});
        QTRY_COMPARE(session.opener.opened, QStringList{"orvik://threads/t"});
    }

    void outlivesAHangingDaemon_data() {
        QTest::addColumn<bool>("hangsAtOnce");
        QTest::newRow("while it shows the notice") << false;
        QTest::newRow("at once") << true;
    }

    void outlivesAHangingDaemon() {
        QFETCH(const bool, hangsAtOnce);
        FakeNotificationDaemon daemon;
        daemon.mood = FakeNotificationDaemon::Mood::hanging;
        daemon.hangsAtOnce = hangsAtOnce;
        Session session;
        QVERIFY(!session.delivery(record("slow")).isEmpty());
        daemon.wakeUp();
        QCOMPARE(session.delivery(record("next")), "");
        QCOMPARE(daemon.notices.size(), hangsAtOnce ? 1 : 2);
        daemon.click(1);
        QTRY_COMPARE(session.opener.opened,
                     QStringList{hangsAtOnce ? "orvik://threads/next" : "orvik://threads/slow"});
    }

    void tellsDaemonsApart() {
        auto daemon = std::make_unique<FakeNotificationDaemon>();
        Session session;
        QCOMPARE(session.delivery(record("old")), "");
        daemon = nullptr;
        daemon = std::make_unique<FakeNotificationDaemon>();
        daemon->click(1);
        QCOMPARE(session.delivery(record("new")), "");
        daemon->click(1);
        QTRY_COMPARE(session.opener.opened, QStringList{"orvik://threads/new"});
    }
};

QTEST_GUILESS_MAIN(TaskNotificationServiceTest)
#include "TaskNotificationServiceTest.moc"
