#include "app/platform/IniUserDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tallyview;

namespace {

// As another process does.
void writeInPlace(const QString &path, const QByteArray &text) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}
void replaceFile(const QString &path, const QByteArray &text) {
    writeInPlace(path + ".new", text);
    QCOMPARE(std::rename(qPrintable(path + ".new"), qPrintable(path)), 0);
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

    /// Adds each key that is signalled to m_changed.
    void follow(const IniUserDefaults &defaults) {
        connect(&defaults, &UserDefaults::changed, this,
                [this](const QString &key) { m_changed += key + ' '; });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_changed;

private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_changed.clear();
    }

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
            {QDateTime::fromMSecsSinceEpoch(1'700'000'000'123), "2023-11-14T22:13:20.123Z"},
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
            QCOMPARE(IniUserDefaults(path()).value(key), kept);
        }
        QTest::qWait(500);
        QCOMPARE(unwritable.text("5"), "268.5");
    }

    void aFullDiskTakesNothing() {
        const QByteArray before = "[General]\nappearanceMode=dark\n";
        QVERIFY(QDir(m_folder->path()).mkdir("orvik"));
        writeInPlace(path(), before);
        ::signal(SIGXFSZ, SIG_IGN);
        IniUserDefaults defaults(path());
        QByteArrayList texts;
        for (const rlim_t room : {rlim_t{0}, rlim_t{20}, RLIM_INFINITY}) {
            const rlimit limit{room, RLIM_INFINITY};
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
            defaults.setValue("sidebarWidth", texts.size());
            QTest::qWait(500);
            texts.append(fileText());
        }
        QCOMPARE(texts, (QByteArrayList{before, before, before + "sidebarWidth=2\n"}));
        QCOMPARE(QDir(path("orvik")).entryList(QDir::Files), QStringList("tallyview.conf"));
    }

    void malformedValuesAreAbsent() {
        IniUserDefaults defaults(path());
        QCOMPARE(defaults.stringList("absent"), std::nullopt);
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
        follow(defaults);
        for (int time = 0; time < 2; ++time) {
            defaults.setValue("sidebarWidth", 268);
            defaults.setValue("pinnedThreadIDs", QStringList{"a", "b"});
        }
        QTRY_COMPARE(fileText(), "[General]\npinnedThreadIDs=a, b\nsidebarWidth=268\n");
        QTest::qWait(500); // its own write comes back through the watched file
        QCOMPARE(m_changed, "sidebarWidth pinnedThreadIDs ");
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
            follow(defaults);
            QVERIFY(QDir(m_folder->path()).mkdir("orvik"));
            write(path(), "[General]\nappearanceMode=dark\nkept=1\ngone=soon\n");
            QTRY_COMPARE(defaults.text("appearanceMode"), "dark");
            QCOMPARE(std::exchange(m_changed, {}), "appearanceMode gone kept ");
            write(path(), "[General]\nappearanceMode=light\nkept=1\nnew=x\n");
            QTRY_COMPARE(defaults.text("appearanceMode"), "light");
            QTest::qWait(300);
            QCOMPARE(m_changed, "appearanceMode gone new ");
        }
    }

    void staysCalmAndLosesNothingWhileAnotherWritesOnAndOn() {
        IniUserDefaults defaults(path());
        follow(defaults);
        QElapsedTimer time;
        time.start();
        const std::unique_ptr<QThread> another(QThread::create([this] {
            IniUserDefaults theirs(path(), nullptr, IniUserDefaults::Changes::ignored);
            for (int number = 0; number < 100; ++number, QThread::msleep(10)) {
                theirs.setValue("number", number);
                theirs.flush();
            }
        }));
        another->start();
        for (int width = 200; !another->wait(0); ++width) {
            defaults.setValue("sidebarWidth", width);
            QTest::qWait(100);
        }
        const QByteArray width = defaults.text("sidebarWidth").value_or("").toUtf8();
        QTRY_COMPARE(fileText(), "[General]\nnumber=99\nsidebarWidth=" + width + "\n");
        QTRY_COMPARE(defaults.number("number"), 99);
        QVERIFY(m_changed.count("number") <= 2 + time.elapsed() / 200);
    }

    void readsWhatQtWroteAndKeepsTheRest() {
        const QByteArray others = "; mine\n[Other]\nb=@Variant(\\0)\n\n[General]\n";
        const QByteArray hostile = "v=@Variant(\\0\\0\\0\\x7f)\nl=a, @ByteArray(b)\n";
        const QByteArray plain =
            "a\\b=3\nt=\" a;\\x4efb\\\"\" ; c\ne=@Invalid()\ns=@@x\nu= 任 务 , \"\" \n";
        const QByteArray added = "n=\\x1\\x31, \"=\", @@\n";
        const QStringList list{QString(u'\x01') + '1', "=", "@"};
        QVERIFY(QDir().mkpath(path("orvik")));
        writeInPlace(path(), others + hostile + plain);
        IniUserDefaults defaults(path());
        for (const char *absent : {"b", "v", "l"}) {
            QCOMPARE(defaults.value(absent), QVariant());
        }
        QCOMPARE(defaults.text("t"), " a;任\"");
        QCOMPARE(defaults.stringList("e"), QStringList());
        QCOMPARE(defaults.text("s"), "@x");
        QCOMPARE(defaults.stringList("u"), (QStringList{"任 务", ""}));
        defaults.setValue("n", list);
        defaults.flush();
        QCOMPARE(fileText(), others + hostile + plain + added);
        writeInPlace(path("copy"), plain + added);
        const QSettings file(path("copy"), QSettings::IniFormat);
        QCOMPARE(file.value("n").toStringList(), list);
        QCOMPARE(file.value("t"), defaults.value("t"));
        IniUserDefaults(path("new/deep/conf")).setValue("a", 1);
        for (const char *made : {"orvik/tallyview.conf", "new", "new/deep", "new/deep/conf"}) {
            QCOMPARE(QFile::permissions(path(made)) & 0x77, QFile::Permissions());
        }
    }

    void whatIsNoOrdinaryFileIsLeftAlone() {
        using Maker = void (*)(const QByteArray &);
        const std::pair<QString, Maker> cases[] = {
            {"not a regular file", [](auto &name) { mkfifo(name, 0600); }},
            {"not a regular file", [](auto &name) { mkdir(name, 0700); }},
            {"Too many levels of symbolic links", [](auto &name) { (void)!symlink(name, name); }},
            {"larger than 1 MiB", [](auto &name) { writeInPlace(name, QByteArray(2 << 20, ' ')); }},
        };
        static QStringList told;
        for (const auto &[reason, make] : cases) {
            const QString conf = path(QString::number(&make - &cases[0].second));
            make(QFile::encodeName(conf));
            const auto before = QFileInfo(conf).size();
            const auto handler = qInstallMessageHandler(
                [](auto, auto &, const QString &message) { told.append(message); });
            IniUserDefaults defaults(conf);
            defaults.setValue("a", 1);
            QTest::qWait(500);
            qInstallMessageHandler(handler);
            QCOMPARE(defaults.text("a"), "1");
            QCOMPARE(told, QStringList("The settings in " + conf + " are left alone: " + reason));
            told.clear();
            QCOMPARE(QFileInfo(conf).size(), before);
        }
    }
};

QTEST_GUILESS_MAIN(IniUserDefaultsTest)
#include "IniUserDefaultsTest.moc"
