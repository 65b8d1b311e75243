#include "app/model/CalendarCutoffs.h"

#include <QTest>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <ctime>
#include <set>
#include <vector>

using namespace tallyview;

namespace {

constexpr qint64 day = 86400;

/// How long a clock keeps its distance from UTC: until the next stretch begins.
struct Stretch {
    qint64 begin;
    qint64 offset;

    friend auto operator<=>(const Stretch &, const Stretch &) = default;
};

std::tm fields(qint64 time) {
    const std::time_t seconds = time;
    std::tm result{};
    localtime_r(&seconds, &result);
    return result;
}

/// From shortly before 1970 to 2038, in the zone of `TZ`.
std::vector<Stretch> stretches() {
    constexpr qint64 week = 7 * day;
    std::vector<Stretch> found{{-5 * week, fields(-5 * week).tm_gmtoff}};
    for (qint64 time = -5 * week; time < 2'145'916'800; time += week) {
        const qint64 offset = fields(time + week).tm_gmtoff;
        if (offset != found.back().offset) {
            qint64 before = time;
            qint64 after = time + week;
            while (after - before > 1) {
                const qint64 middle = (before + after) / 2;
                (fields(middle).tm_gmtoff == offset ? after : before) = middle;
            }
            found.push_back({after, offset});
        }
    }
    return found;
}

qint64 firstInstant(QDate date, const std::vector<Stretch> &clock) {
    const qint64 midnight = QDate(1970, 1, 1).daysTo(date) * day;
    for (std::size_t i = 0;; ++i) {
        const qint64 reached = std::max(clock[i].begin, midnight - clock[i].offset);
        if (i + 1 == clock.size() || reached < clock[i + 1].begin) {
            return reached;
        }
    }
}

/// Whether today, tomorrow and the week start with the first instant of their day.
bool startsAreRight(qint64 now, const UtcOffset &utcOffset, const std::vector<Stretch> &clock) {
    const std::tm local = fields(now);
    const QDate today(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
    const auto first = [&](int days) {
        return Instant(std::chrono::seconds(firstInstant(today.addDays(days), clock)));
    };
    const auto cutoffs = CalendarCutoffs::at(Instant(std::chrono::seconds(now)), utcOffset);
    return std::array{cutoffs.startOfToday, cutoffs.startOfTomorrow, cutoffs.week} ==
           std::array{first(0), first(1), first(-6)};
}

} // namespace

class CalendarCutoffsTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("TZ"); }

    void daysStartWithTheirFirstInstantInEveryZone() {
        std::set<std::vector<Stretch>> clocks;
        for (const QByteArray &zone : QTimeZone::availableTimeZoneIds()) {
            qputenv("TZ", zone);
            const UtcOffset utcOffset = userUtcOffset();
            const auto [clock, isNew] = clocks.insert(stretches());
            for (std::size_t i = 1; isNew && i < clock->size(); ++i) {
                // So that today, tomorrow or the day six days ago is that of the change.
                for (const qint64 distance : {-day, qint64{-1}, qint64{0}, 6 * day}) {
                    const qint64 now = (*clock)[i].begin + distance;
                    if (!startsAreRight(now, utcOffset, *clock)) {
                        QFAIL((zone + " at " + QByteArray::number(now)).constData());
                    }
                }
            }
        }
        QVERIFY2(clocks.size() > 100, "the system knows hardly any time zone");
    }
};

QTEST_GUILESS_MAIN(CalendarCutoffsTest)
#include "CalendarCutoffsTest.moc"
