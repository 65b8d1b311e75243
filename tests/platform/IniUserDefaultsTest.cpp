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
#include <optional>

using namespace tallyview;

namespace {

/// As another process does: QSettings objects of one process share their values past the file.
void writeInPlace(const QString &path, const QByteArray &text) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
}

void replaceFile(const QString &path, const QByteArray &text) {
    QSaveFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    QVERIFY(file.commit());
}

/// The keys signalled, in order of their names.
QStringList changedKeys(const QSignalSpy &spy) {
    QStringList keys;
    for (const QList<QVariant> &arguments : spy) {
        keys.append(arguments.constFirst().toString());
    }
    keys.sort();
    return keys;
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
        QVERIFY(QDir().mkpath(m_folder->filePath("orvik")));
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

    void keepsValues_data() {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("kept");
        const auto row = [](const char *name, const QVariant &value, const QVariant &kept) {
            QTest::newRow(name) << value << kept;
        };
        const auto same = [&row](const char *name, const QVariant &value) {
            row(name, value, value);
        };

        same("no texts", QStringList());
        row("one text", QStringList{"a"}, "a");
        row("one empty text", QStringList{""}, "");
        same("texts", QStringList{"a", "b"});
        same("texts with separators", QStringList{"a, b", "\"c\"", "d;e=f", "", " g ", "h\ni"});
        same("texts like numbers", QStringList{"007", "1e5", "true"});
        row("texts from a script", QVariantList{"a", "b"}, QStringList{"a", "b"});
        row("one text from a script", QVariantList{"a"}, "a");
        row("whole number", 2, "2");
        row("fraction", 268.5, "268.5");
        row("true", true, "true");
        row("false", false, "false");
        same("text like a number", "007");
        same("text like an escape", "@Invalid()");
        same("empty text", "");
        same("Chinese and emoji", QStringList{u"浅色"_qs, u"任务 🎉"_qs});
        same("date", QDateTime::fromMSecsSinceEpoch(1'700'000'000'123, Qt::UTC));
    }

    void keepsValues() {
        QFETCH(const QVariant, value);
        QFETCH(const QVariant, kept);
        {
            IniUserDefaults defaults(path());
            defaults.setValue("key", value);
            QCOMPARE(defaults.value("key"), kept);
        }
        QVERIFY(QFile::copy(path(), path("copy.conf")));
        const IniUserDefaults restarted(path("copy.conf"));
        QCOMPARE(restarted.value("key"), kept);
    }

    void malformedValuesAreAbsent() {
        IniUserDefaults defaults(path());
        QCOMPARE(defaults.stringList("absent"), std::nullopt);
        QCOMPARE(defaults.number("absent"), std::nullopt);
        defaults.setValue("date", QDateTime::currentDateTimeUtc());
        QCOMPARE(defaults.stringList("date"), std::nullopt);
        QCOMPARE(defaults.text("date"), std::nullopt);
        defaults.setValue("mixed", QVariantList{"a", QDateTime::currentDateTimeUtc()});
        QCOMPARE(defaults.stringList("mixed"), std::nullopt);
        for (const char *text : {"", "wide", "nan", "inf", "12px"}) {
            defaults.setValue("number", text);
            QCOMPARE(defaults.number("number"), std::nullopt);
        }
        defaults.setValue("number", 268.5);
        QCOMPARE(defaults.number("number"), 268.5);
        defaults.setValue("one", QStringList{"a"});
        QCOMPARE(defaults.stringList("one"), QStringList{"a"});
    }

    void keepsPlainKeysInGeneral() {
        {
            IniUserDefaults defaults(path());
            defaults.setValue("appearanceMode", "dark");
            defaults.setValue("gone", 1);
            defaults.setValue("pinnedThreadIDs", QStringList{"a", "b"});
            defaults.remove("gone");
        }
        QCOMPARE(fileText(), "[General]\nappearanceMode=dark\npinnedThreadIDs=a, b\n");
    }

    void writesInTimeAndSignalsOnce() {
        IniUserDefaults defaults(path());
        QVERIFY(!QFileInfo(path()).dir().exists());
        const QSignalSpy spy(&defaults, &UserDefaults::changed);
        for (int width = 0; width <= 300; ++width) {
            defaults.setValue("sidebarWidth", 268);
            defaults.setValue("dashboardMode", "focus");
        }
        QCOMPARE(changedKeys(spy), (QStringList{"dashboardMode", "sidebarWidth"}));
        QTRY_COMPARE(fileText(), "[General]\ndashboardMode=focus\nsidebarWidth=268\n");
        QTest::qWait(500); // its own write comes back through the watched file
        QCOMPARE(spy.count(), 2);
    }

    void noticesAnotherProcess_data() {
        QTest::addColumn<bool>("existsBefore");
        QTest::addColumn<bool>("replaced");
        QTest::newRow("written in place") << true << false;
        QTest::newRow("replaced") << true << true;
        QTest::newRow("new folder") << false << false;
    }

    void noticesAnotherProcess() {
        QFETCH(const bool, existsBefore);
        QFETCH(const bool, replaced);
        if (existsBefore) {
            QVERIFY(QDir().mkpath(path("orvik")));
            writeInPlace(path(), "[General]\nappearanceMode=dark\nkept=1\ngone=soon\n");
        }
        IniUserDefaults defaults(path());
        QSignalSpy spy(&defaults, &UserDefaults::changed);
        QVERIFY(QDir().mkpath(path("orvik")));
        const auto write = replaced ? replaceFile : writeInPlace;

        write(path(), "[General]\nappearanceMode=light\nkept=1\nnew=x\n");
        QTRY_COMPARE(defaults.text("appearanceMode"), "light");
        QCOMPARE(changedKeys(spy), existsBefore ? QStringList({"appearanceMode", "gone", "new"})
                                                : QStringList({"appearanceMode", "kept", "new"}));

        spy.clear();
        write(path(), "[General]\nappearanceMode=system\nkept=1\nnew=x\n");
        QTRY_COMPARE(defaults.text("appearanceMode"), "system");
        QTest::qWait(300);
        QCOMPARE(changedKeys(spy), QStringList{"appearanceMode"});
    }

    void keepsWhatBothProcessesWrote() {
        IniUserDefaults defaults(path());
        defaults.setValue("mine", 1);
        QTRY_VERIFY(QFileInfo::exists(path()));
        writeInPlace(path(), "[General]\nmine=1\ntheirs=2\n");
        defaults.setValue("mine", 3);
        QTRY_COMPARE(fileText(), "[General]\nmine=3\ntheirs=2\n");
        QTRY_COMPARE(defaults.number("theirs"), 2);
    }

    void survivesAnUnwritableFolder() {
        writeInPlace(path("orvik"), "a file where the folder should be");
        IniUserDefaults defaults(path());
        const QSignalSpy spy(&defaults, &UserDefaults::changed);
        defaults.setValue("appearanceMode", "dark");
        QTest::qWait(500);
        QCOMPARE(defaults.text("appearanceMode"), "dark");
        QCOMPARE(spy.count(), 1);
    }
};

QTEST_GUILESS_MAIN(IniUserDefaultsTest)
#include "IniUserDefaultsTest.moc"
