#include "app/platform/FreedesktopBackgroundPresence.h"

#include <QTest>

using namespace tallyview;

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
    void describesToThePortal() {
        FakePortal portal;
        auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
        bus.registerObject("/org/freedesktop/portal/desktop", &portal,
                           QDBusConnection::ExportAllSlots);
        bus.registerService("org.freedesktop.portal.Desktop");
        FreedesktopBackgroundPresence().describe("3 个任务进行中");
        const QList<QVariantMap> expected{{{"message", "3 个任务进行中"}}};
        QTRY_COMPARE(portal.statuses, expected);
    }
};

QTEST_GUILESS_MAIN(FreedesktopBackgroundPresenceTest)
#include "FreedesktopBackgroundPresenceTest.moc"
