#include "app/shell/SceneRenderer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace tallyview {

class SceneRendererTest : public QObject {
    Q_OBJECT

private slots:
    void findsAGraphicsProcessor_data() {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<bool>("expected");
        QTest::newRow("nothing") << QStringList() << false;
        QTest::newRow("a screen that nothing draws for") << QStringList{"dri/card0"} << false;
        QTest::newRow("a render node") << QStringList{"dri/card0", "dri/renderD128"} << true;
        QTest::newRow("a driver from elsewhere") << QStringList{"nvidia0"} << true;
        QTest::newRow("a borrowed processor") << QStringList{"dxg"} << true;
    }

    void findsAGraphicsProcessor() {
        QFETCH(QStringList, files);
        QFETCH(bool, expected);
        const QTemporaryDir devices;
        QDir(devices.path()).mkdir("dri");
        for (const QString &name : files) {
            QVERIFY(QFile(devices.filePath(name)).open(QIODevice::WriteOnly));
        }
        QCOMPARE(hasGraphicsProcessor(devices.path()), expected);
    }
};

} // namespace tallyview

QTEST_GUILESS_MAIN(tallyview::SceneRendererTest)
#include "SceneRendererTest.moc"
