#include "app/model/DetailState.h"

#include "tests/model/ModelFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

struct DetailFixture : ModelFixture {
    DetailFixture() {
        details.setModel(&model);
        model.setStatusFilter(TaskStatusFilter::all);
        QObject::connect(&details, &DetailState::identityChanged, &details,
                         [this] { changes.append("identity " + details.detail().threadID); });
        QObject::connect(&details, &DetailState::detailChanged, &details,
                         [this] { changes.append("detail " + details.detail().title); });
    }

    /// The changes since the last call.
    QString settle() {
        QCoreApplication::processEvents();
        return std::exchange(changes, {}).join(u", ");
    }

    DetailState details;
    QStringList changes;
};

ThreadRecord::Fields bare(const std::string &id) {
    return {.id = id, .title = "Title", .project = "Atlas"};
}

QString texts(const ThreadDetail &detail) {
    return QStringList{detail.project, detail.updated,   detail.source,
                       detail.model,   detail.effort,    detail.tokens,
                       detail.branch,  detail.directory, detail.threadID}
        .join(u'|');
}

} // namespace

class DetailStateTest : public QObject {
    Q_OBJECT

private slots:
    void followsTheSelection() {
        DetailFixture f;
        QCOMPARE(f.details.identity(), "empty-detail");
        QVERIFY(!f.details.detail().exists);
        f.show({{.id = "a", .title = "One"}, {.id = "b", .age = 1, .title = "Two"}});
        QCOMPARE(f.settle(), "identity a, detail One");
        f.model.setSelectedThreadID("b");
        QCOMPARE(f.settle(), "identity b, detail Two");
        f.show({{.id = "b", .age = 1, .title = "Two, renamed"}});
        QCOMPARE(f.settle(), "detail Two, renamed");
        f.refresh();
        QCOMPARE(f.settle(), "");
        f.model.setSelectedThreadID("gone");
        QCOMPARE(f.settle(), "identity , detail ");
        QCOMPARE(f.details.identity(), "gone");
        f.model.setSelectedThreadID(std::nullopt);
        QCOMPARE(f.settle(), "identity ");
        QCOMPARE(f.details.identity(), "empty-detail");
    }

    void writesOutWhatIsKnown_data() {
        QTest::addColumn<ThreadRecord::Fields>("fields");
        QTest::addColumn<QString>("expected");
        QTest::newRow("nothing") << bare("abc") << "Atlas|未知||未记录|未记录|0|未记录|未记录|abc";
        ThreadRecord::Fields full = bare("019a3f20-1");
        full.updatedAt = Instant(std::chrono::seconds(noon));
        full.source = "cli";
        full.model = "m-5";
        full.reasoningEffort = "high";
        full.tokensUsed = 1'234'567;
        full.branch = "feature/x";
        full.projectPath = "/src/a\nb";
        QTest::newRow("everything")
            << full
            << "Atlas|2024/03/07 12:00|cli|m-5|high|1,234,567|feature/x|/src/a b|019a3f20-1";
        ThreadRecord::Fields path = bare("x");
        path.projectPath = "/" + std::string(5'000'000, 'p');
        QTest::newRow("an endless path")
            << path << "Atlas|未知||未记录|未记录|0|未记录|/" + QString(4095, u'p') + "|x";
    }
    void writesOutWhatIsKnown() {
        QFETCH(ThreadRecord::Fields, fields);
        QFETCH(QString, expected);
        QLocale::setDefault(QLocale(QLocale::English));
        QCOMPARE(texts(threadDetail(ThreadRecord(fields), false, QTimeZone::utc())), expected);
    }

    void theBadgeIsShort() {
        const std::pair<const char *, const char *> badges[] = {
            {"019a3f20", "AB-019A3"},
            {"x9", "AB-X9"},
            {"é👩‍👩‍👧ß12", "AB-É👩‍👩‍👧SS12"}, // characters, not bytes
            {"", "AB-"},
        };
        for (const auto &[id, badge] : badges) {
            ThreadRecord::Fields fields = bare(id);
            fields.project = "atlas-board";
            QCOMPARE(threadDetail(ThreadRecord(fields), false, QTimeZone::utc()).badge, badge);
        }
    }

    void longTextsAreCutWithTheirLinesKept() {
        ThreadRecord::Fields fields = bare("a");
        fields.title = "one\ntwo";
        // The pair of units of the emoji stands where the text is cut.
        fields.preview = std::string(1999, 'p') + "🙂" + std::string(5'000'000, 'q');
        const ThreadDetail detail = threadDetail(ThreadRecord(fields), false, QTimeZone::utc());
        QCOMPARE(detail.title, "one\ntwo");
        QCOMPARE(detail.preview, QString(1999, u'p'));
    }

    void actsOnTheThreadShown() {
        DetailFixture f;
        f.details.open();
        f.details.togglePin();
        f.details.copyID();
        QVERIFY(f.opener.opened.isEmpty() && f.pasteboard.text.isNull());
        f.show({{.id = "a b/c;%?é"}, {.id = "c", .age = 1, .archived = true}});
        QVERIFY(f.details.detail().active);
        f.details.open();
        QCOMPARE(f.opener.opened.join(), "orvik://threads/a%20b/c;%25%3F%C3%A9");
        f.details.copyID();
        QCOMPARE(f.pasteboard.text, "a b/c;%?é");
        for (const bool pinned : {true, false}) {
            f.details.togglePin();
            f.settle();
            QCOMPARE(f.details.detail().pinned, pinned);
            QCOMPARE(f.model.pinnedIDs().contains("a b/c;%?é"), pinned);
        }
        // An archived thread is finished.
        f.model.setSelectedThreadID("c");
        f.settle();
        QCOMPARE(f.details.detail().stateLabel, "已完成");
        QVERIFY(!f.details.detail().active);
    }
};

QTEST_GUILESS_MAIN(DetailStateTest)

#include "DetailStateTest.moc"
