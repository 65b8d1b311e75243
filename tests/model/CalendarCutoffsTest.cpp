#include "app/model/CalendarCutoffs.h"

#include <QTest>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <vector>

using namespace tallyview;

namespace {

constexpr qint64 day = 86400;

/// How long a clock keeps its distance from UTC: until the next stretch begins.
struct Stretch {
    qint64 begin;
    qint64 offset;
};

/// From shortly before 1970 to 2038. Without the local time of Qt, which would read `TZ` for
/// others.
std::vector<Stretch> stretches(const QTimeZone &zone) {
    const auto begin = QDateTime::fromSecsSinceEpoch(-35 * day, QTimeZone::utc());
    const auto end = QDateTime::fromSecsSinceEpoch(24837 * day, QTimeZone::utc());
    std::vector<Stretch> found{{begin.toSecsSinceEpoch(), zone.offsetFromUtc(begin)}};
    for (const auto &change : zone.transitions(begin, end)) {
        found.push_back({change.atUtc.toSecsSinceEpoch(), change.offsetFromUtc});
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
bool startsAreRight(qint64 now, const QTimeZone &zone, const std::vector<Stretch> &clock) {
    const QDate today = QDateTime::fromSecsSinceEpoch(now, zone).date();
    const auto first = [&](int days) {
        return Instant(std::chrono::seconds(firstInstant(today.addDays(days), clock)));
    };
    const auto cutoffs = CalendarCutoffs::at(Instant(std::chrono::seconds(now)), userUtcOffset());
    return std::array{cutoffs.startOfToday, cutoffs.startOfTomorrow, cutoffs.week} ==
           std::array{first(0), first(1), first(-6)};
}

} // namespace

class CalendarCutoffsTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("TZ"); }

    void daysStartWithTheirFirstInstantInEveryZone() {
        int checks = 0;
        for (const QByteArray &name : QTimeZone::availableTimeZoneIds()) {
            qputenv("TZ", name);
            const QTimeZone zone(name);
            const std::vector<Stretch> clock = stretches(zone);
            for (std::size_t i = 1; i < clock.size(); ++i) {
                // So that today, tomorrow or the day six days ago is that of the change.
                for (const qint64 distance : {-day, qint64{-1}, qint64{0}, 6 * day}) {
                    const qint64 now = clock[i].begin + distance;
                    QVERIFY2(startsAreRight(now, zone, clock),
                             (name + " at " + QByteArray::number(now)).constData());
                    ++checks;
                }
            }
        }
        QVERIFY2(checks > 10'000, "the system knows hardly any time zone");
    }
};

QTEST_GUILESS_MAIN(CalendarCutoffsTest)
#include "CalendarCutoffsTest.moc"
