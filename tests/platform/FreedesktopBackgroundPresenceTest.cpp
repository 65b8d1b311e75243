#include "app/platform/FreedesktopBackgroundPresence.h"

#include <QSignalSpy>
#include <QTest>

using namespace tallyview;

namespace {

QDBusConnection desktop() {
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
}

} // namespace

/// The portal's part for processes without a window, as it is for a program in a sandbox.
class FakePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Background")

public:
    Q_SLOT void SetStatus(const QVariantMap &options) { statuses.append(options); }

    QList<QVariantMap> statuses;
};

class FreedesktopBackgroundPresenceTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QDBusConnection::disconnectFromBus("desktop"); }

    void followsTheTray() {
        const QString service = "org.kde.StatusNotifierWatcher";
        desktop().registerService(service);
        const FreedesktopBackgroundPresence presence;
        const QSignalSpy changed(&presence, &BackgroundPresence::hasTrayChanged);
        QTRY_VERIFY(presence.hasTray());
        desktop().unregisterService(service);
        QTRY_VERIFY(!presence.hasTray());
        desktop().registerService(service);
        QTRY_VERIFY(presence.hasTray());
        QCOMPARE(changed.count(), 3);
    }

    void describesToThePortal() {
        FakePortal portal;
        desktop().registerObject("/org/freedesktop/portal/desktop", &portal,
                                 QDBusConnection::ExportAllSlots);
        desktop().registerService("org.freedesktop.portal.Desktop");
        FreedesktopBackgroundPresence().describe("3 个任务进行中");
        const QList<QVariantMap> expected{{{"message", "3 个任务进行中"}}};
        QTRY_COMPARE(portal.statuses, expected);
    }
};

QTEST_GUILESS_MAIN(FreedesktopBackgroundPresenceTest)
#include "FreedesktopBackgroundPresenceTest.moc"
