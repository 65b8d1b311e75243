#include "app/model/CalendarCutoffs.h"

#include <QTest>

using namespace tallyview;

class CalendarCutoffsTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("TZ"); }

    void daysStartWithTheirFirstInstant() {
        struct Case {
            const char *zone;
            double now;
            double today, tomorrow, week; ///< hours from `now`
        };
        const Case cases[] = {
            {"Asia/Shanghai", 1'709'812'800, -20, 4, -164},
            // A week of an hour less.
            {"America/New_York", 1'710'388'800, 0, 24, -143},
            // Midnight is skipped today, tomorrow, six days ago.
            {"America/Sao_Paulo", 1'541'340'000, -11, 12, -155},
            {"America/Sao_Paulo", 1'541'257'200, -12, 12, -156},
            {"America/Sao_Paulo", 1'541'858'400, -12, 12, -155},
            // Midnight comes twice today, today, tomorrow, six days ago.
            {"America/Havana", 1'730'653'200, -13, 12, -157},
            {"America/St_Johns", 1'162'135'800, -13, 12, -157},
            {"America/St_Johns", 1'162'045'800, -12, 12, -156},
            {"America/St_Johns", 1'162'654'200, -12, 12, -157},
            // A whole day is skipped: yesterday, tomorrow, six days ago.
            {"Pacific/Apia", 1'325'282'400, -12, 12, -132},
            {"Pacific/Apia", 1'325'196'000, -12, 12, -156},
            {"Pacific/Apia", 1'325'714'400, -12, 12, -132},
        };
        for (const auto &[zone, now, today, tomorrow, week] : cases) {
            qputenv("TZ", zone);
            const Instant moment{std::chrono::duration<double>(now)};
            const auto cutoffs = CalendarCutoffs::at(moment, userUtcOffset());
            QCOMPARE((cutoffs.startOfToday - moment).count(), today * 3600);
            QCOMPARE((cutoffs.startOfTomorrow - moment).count(), tomorrow * 3600);
            QCOMPARE((cutoffs.week - moment).count(), week * 3600);
        }
    }
};

QTEST_GUILESS_MAIN(CalendarCutoffsTest)
#include "CalendarCutoffsTest.moc"
