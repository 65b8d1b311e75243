#include "app/presentation/ThreadFormatting.h"

#include "app/model/DashboardEnvironment.h"
#include "app/presentation/DisplayText.h"
#include "app/presentation/ProjectCards.h"
#include "app/presentation/ThreadDetail.h"

#include <QTest>

#include <limits>
#include <utility>

using namespace tallyview;

namespace {

constexpr double now = 1'709'812'800; // 2024-03-07 12:00:00 UTC

Instant at(double seconds) { return Instant(std::chrono::duration<double>(seconds)); }

ThreadDetail detail(const ThreadRecord::Fields &fields) {
    return threadDetail(
        ThreadRecord(fields), false, [](qint64) { return 0; }, ThreadFormatting::numberIn("en"));
}

QString properties(const ThreadRecord::Fields &fields) {
    const ThreadDetail shown = detail(fields);
    QStringList texts{shown.badge};
    for (const DetailProperty &property : shown.properties) {
        texts.append(property.value);
    }
    return texts.join(u'|');
}

} // namespace

class ThreadFormattingTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("TZ"); }

    void detailsWriteOutWhatIsKnown() {
        QCOMPARE(properties({.project = "Atlas"}),
                 "ATL-|Atlas|未知||未记录|未记录|0|未记录|未记录|");
        QCOMPARE(properties({.id = "019a3f20-1",
                             .project = "atlas-board",
                             .projectPath = "/src/a\nb",
                             .source = "cli",
                             .model = "m-5",
                             .reasoningEffort = "high",
                             .branch = "feature/x",
                             .tokensUsed = 1'234'567,
                             .updatedAt = at(now)}),
                 "AB-019A3|atlas-board|2024/03/07 12:00|cli|m-5|high|1,234,567|feature/x|/src/a\nb|"
                 "019a3f20-1");
        // A badge counts characters, not bytes.
        QCOMPARE(detail({.id = "é👩‍👩‍👧ß12", .project = "web"}).badge,
                 "WEB-É👩‍👩‍👧SS12");
    }

    void detailsCutLongTexts() {
        const std::string endless(5'000'000, 'x');
        // The pair of units of the emoji stands where the text is cut.
        const ThreadDetail shown = detail({.title = "one\ntwo",
                                           .preview = endless.substr(0, 1999) + "🙂" + endless,
                                           .projectPath = endless});
        QCOMPARE(shown.title, "one\ntwo");
        QCOMPARE(shown.preview, QString(1999, u'x'));
        QCOMPARE(shown.properties[7].value.toStdString(), endless);
    }

    void textsOfAnotherDirectionEndWithThemselves() {
        const std::pair<const char *, QString> cases[] = {
            {"atlas 任务\n2", "atlas 任务 2"},
            {"שלום", QStringLiteral("\u2068שלום\u2069")},
            {"a\u202Eb", QStringLiteral("\u2068a\u202Eb\u2069")},
            {"a\u2067b", QStringLiteral("\u2068a\u2067b\u2069\u2069")},
            {"a\u2069\u2067b\u2069c", QStringLiteral("\u2068a\u2067b\u2069c\u2069")},
        };
        for (const auto &[text, shown] : cases) {
            QCOMPARE(DisplayText::isolated(text), shown);
        }
        ProjectSummary project;
        project.name = "a\u202Eb";
        QCOMPARE(projectCard(project, at(now), userUtcOffset()).helpText,
                 QStringLiteral("进入 \u2068a\u202Eb\u2069 的任务动态"));
    }

    void relativeAges() {
        const std::pair<double, const char *> ages[] = {
            {-1e9, "刚刚"},     {59.9, "刚刚"},
            {60, "1 分钟前"},   {3599.9, "59 分钟前"},
            {3600, "1 小时前"}, {86399, "23 小时前"},
            {86400, "1 天前"},  {604799, "6 天前"},
            {604800, "02/29"},  {604800 + 21 * 3600, "02/28"},
        };
        const auto shown = [](std::optional<Instant> time) {
            return ThreadFormatting::relative(time, at(now), [](qint64) { return 8 * 3600; });
        };
        for (const auto &[age, text] : ages) {
            QCOMPARE(shown(at(now - age)), text);
        }
        QCOMPARE(shown({}), "时间未知");
    }

    void timesOfDamagedRowsAndClocksAreShown() {
        const std::pair<double, const char *> times[] = {
            {-6.21e10, "0002/02/17 00:00"}, // no row has it, a clock may
            {0.001, "1970/01/01 00:00"},
            {253'402'300'799.0, "9999/12/31 23:59"},
            {253'402'300'800.0, "10000/01/01 00:00"},
            {9'223'372'036'854'775.0, "275760/09/13 00:00"},
        };
        for (const char *zone : {"UTC", "Europe/Berlin", "Pacific/Apia", "XXX24YYY,J1,J365"}) {
            qputenv("TZ", zone);
            const UtcOffset clock = userUtcOffset();
            for (const auto &[time, text] : times) {
                // Newer toolkits sign a year of five digits.
                const QString shown = ThreadFormatting::full(at(time), clock).remove(u'+');
                QVERIFY2(qstrcmp(zone, "UTC") != 0 || shown == text, qPrintable(shown));
                const auto cutoffs = CalendarCutoffs::at(at(time), clock);
                QVERIFY(cutoffs.week < cutoffs.startOfToday);
                QVERIFY(cutoffs.startOfToday < cutoffs.startOfTomorrow);
                QVERIFY(cutoffs.isToday(at(std::min(time, 8.64e12))));
            }
        }
    }

    void datesAreThoseOfTheUsersClock() {
        for (const char *zone :
             {"Europe/Berlin", ":Europe/Berlin", "CET-1CEST,M3.5.0,M10.5.0/3",
              "/usr/share/zoneinfo/Europe/Berlin", "UTC-1UTC,M3.5.0,M10.5.0/3"}) {
            qputenv("TZ", zone);
            QCOMPARE(ThreadFormatting::full(at(now + 300.999), userUtcOffset()),
                     "2024/03/07 13:05");
            QCOMPARE(ThreadFormatting::full(at(now + 180 * 86400), userUtcOffset()),
                     "2024/09/03 14:00");
        }
    }

    void numbersAreThoseOfTheUsersRegion() {
        constexpr std::int64_t million = 1'234'567;
        using Variables = std::vector<std::pair<const char *, const char *>>;
        const std::tuple<Variables, std::int64_t, const char *> cases[] = {
            {{}, 1234, "1,234"},
            {{}, std::numeric_limits<std::int64_t>::min(), "-9,223,372,036,854,775,808"},
            {{{"LC_ALL", "C.UTF-8"}, {"LANG", "de_DE"}}, million, "1,234,567"},
            {{{"LC_ALL", "de_DE.UTF-8@euro"}, {"LC_NUMERIC", "en_US"}}, million, "1.234.567"},
            {{{"LC_NUMERIC", "fr_FR.UTF-8"}, {"LANG", "de_DE"}}, million, "1 234 567"},
            {{{"LC_ALL", ""}, {"LC_NUMERIC", ""}, {"LANG", "es_ES.UTF-8"}}, million, "1.234.567"},
            {{{"LANG", "en_US"}, {"LC_MESSAGES", "de_DE"}}, 1234, "1,234"},
            {{{"LANG", "ar_EG.UTF-8"}}, million, "١٬٢٣٤٬٥٦٧"},
            {{{"LANG", "en@numbers=none"}}, million, "1234567"},
        };
        for (const auto &[variables, value, text] : cases) {
            for (const char *variable : {"LC_ALL", "LC_NUMERIC", "LC_MESSAGES", "LANG"}) {
                qunsetenv(variable);
            }
            for (const auto &[variable, locale] : variables) {
                qputenv(variable, locale);
            }
            QCOMPARE(ThreadFormatting::numberIn(userNumberLocale())(value), text);
        }
    }
};

QTEST_GUILESS_MAIN(ThreadFormattingTest)
#include "ThreadFormattingTest.moc"
