#include "app/platform/IniUserDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace tallyview;

namespace {

/// As another process does: QSettings objects of one process share their values past the file.
template <class File>
void writeTo(const QString &path, const QByteArray &text) {
    File file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    if constexpr (requires { file.commit(); }) {
        QVERIFY(file.commit());
    }
}
constexpr auto writeInPlace = writeTo<QFile>;
constexpr auto replaceFile = writeTo<QSaveFile>;

/// The keys signalled, in order of their names.
QString changedKeys(const QSignalSpy &spy) {
    QStringList keys;
    for (const QList<QVariant> &arguments : spy) {
        keys.append(arguments.constFirst().toString());
    }
    keys.sort();
    return keys.join(' ');
}

} // namespace

class IniUserDefaultsTest : public QObject {
    Q_OBJECT

    QString path(const QString &name = "orvik/tallyview.conf") const {
        return m_folder->filePath(name);
    }
    QByteArray fileText() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_folder;

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aLockThatIsHeldIsNotWaitedFor() {
        IniUserDefaults defaults(path());
        QVERIFY(QDir(m_folder->path()).mkdir("orvik"));
        writeInPlace(path() + ".lock", "");
        defaults.setValue("appearanceMode", "dark");
        QTest::qWait(600);
        QCOMPARE(fileText(), "");
        QCOMPARE(defaults.value("appearanceMode"), "dark");
        // Nobody who writes takes that long.
        QFile lock(path() + ".lock");
        QVERIFY(lock.open(QIODevice::ReadWrite));
        lock.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFile::FileModificationTime);
        lock.close();
        QTRY_COMPARE(fileText(), "[General]\nappearanceMode=dark\n");
    }

    void keepsValues() {
        const auto same = [](const QVariant &value) { return std::pair(value, value); };
        const std::pair<QVariant, QVariant> cases[] = {
            same(QStringList()),
            {QStringList{"a"}, "a"},
            same(QStringList{"a, b", "\"c\"", "d;e=f", "", " g ", "h\ni", "1e5", "任务 🎉"}),
            {QVariantList{"a", "b"}, QStringList{"a", "b"}}, // from a script
            {268.5, "268.5"},
            {true, "true"},
            same("007"),
            same("@Invalid()"),
            same(QDateTime::fromMSecsSinceEpoch(1'700'000'000'123).toUTC()),
        };
        // A folder that cannot be made: the values last as long as the process.
        writeInPlace(path("file"), "");
        IniUserDefaults unwritable(path("file/tallyview.conf"));
        int number = 0;
        for (const auto &[value, kept] : cases) {
            const QString key = QString::number(++number);
            unwritable.setValue(key, value);
            QCOMPARE(unwritable.value(key), kept);
            IniUserDefaults(path()).setValue(key, value);
            const QString copy = path(key + ".conf");
            QVERIFY(QFile::copy(path(), copy));
            QCOMPARE(IniUserDefaults(copy).value(key), kept);
        }
        QTest::qWait(500);
        QCOMPARE(unwritable.text("5"), "268.5");
    }

    void malformedValuesAreAbsent() {
        IniUserDefaults defaults(path());
        const QVariant date = QDateTime::currentDateTimeUtc();
        for (const QVariant &value : {QVariant(), date, QVariant(QVariantList{"a", date})}) {
            defaults.setValue("list", value);
            QCOMPARE(defaults.stringList("list"), std::nullopt);
            QCOMPARE(defaults.text("list"), std::nullopt);
        }
        for (const char *text : {"", "nan", "inf", "12px"}) {
            defaults.setValue("number", text);
            QCOMPARE(defaults.number("number"), std::nullopt);
        }
        defaults.setValue("one", QStringList{"a"});
        QCOMPARE(defaults.stringList("one"), QStringList{"a"});
    }

    void writesInTimeAndSignalsOnce() {
        IniUserDefaults defaults(path());
        QVERIFY(!QFileInfo(path()).dir().exists());
        const QSignalSpy spy(&defaults, &UserDefaults::changed);
        for (int time = 0; time < 2; ++time) {
            defaults.setValue("sidebarWidth", 268);
            defaults.setValue("pinnedThreadIDs", QStringList{"a", "b"});
        }
        QCOMPARE(changedKeys(spy), "pinnedThreadIDs sidebarWidth");
        QTRY_COMPARE(fileText(), "[General]\npinnedThreadIDs=a, b\nsidebarWidth=268\n");
        QTest::qWait(500); // its own write comes back through the watched file
        QCOMPARE(spy.count(), 2);
        // Another process writes just before the next change: both stay.
        writeInPlace(path(), "[General]\nsidebarWidth=268\ntheirs=2\n");
        defaults.setValue("sidebarWidth", 300);
        QTRY_COMPARE(fileText(), "[General]\nsidebarWidth=300\ntheirs=2\n");
        QTRY_COMPARE(defaults.number("theirs"), 2);
        defaults.remove("sidebarWidth");
        QTRY_COMPARE(fileText(), "[General]\ntheirs=2\n");
    }

    void noticesAnotherProcess() {
        for (const auto write : {writeInPlace, replaceFile}) {
            init();
            IniUserDefaults defaults(path());
            QSignalSpy spy(&defaults, &UserDefaults::changed);
            QVERIFY(QDir(m_folder->path()).mkdir("orvik"));
            write(path(), "[General]\nappearanceMode=dark\nkept=1\ngone=soon\n");
            QTRY_COMPARE(defaults.text("appearanceMode"), "dark");
            QCOMPARE(changedKeys(spy), "appearanceMode gone kept");

            spy.clear();
            write(path(), "[General]\nappearanceMode=light\nkept=1\nnew=x\n");
            QTRY_COMPARE(defaults.text("appearanceMode"), "light");
            QTest::qWait(300);
            QCOMPARE(changedKeys(spy), "appearanceMode gone new");
        }
    }
};

QTEST_GUILESS_MAIN(IniUserDefaultsTest)
#include "IniUserDefaultsTest.moc"
