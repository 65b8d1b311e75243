#include "app/shell/SceneRenderer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace tallyview {

class SceneRendererTest : public QObject {
    Q_OBJECT

private slots:
    void findsAGraphicsProcessor() {
        const std::pair<QStringList, bool> machines[] = {
            {{}, false},
            {{"dri/card0"}, false}, // a screen that nothing draws for
            {{"dri/card0", "dri/renderD128"}, true},
            {{"nvidia0"}, true},
            {{"dxg"}, true},
        };
        for (const auto &[files, expected] : machines) {
            const QTemporaryDir devices;
            QDir(devices.path()).mkdir("dri");
            for (const QString &name : files) {
                QVERIFY(QFile(devices.filePath(name)).open(QIODevice::WriteOnly));
            }
            QCOMPARE(hasGraphicsProcessor(devices.path()), expected);
        }
    }
};

} // namespace tallyview

QTEST_GUILESS_MAIN(tallyview::SceneRendererTest)
#include "SceneRendererTest.moc"
