#include "app/model/CalendarCutoffs.h"

#include <QTest>
#include <QTimeZone>

#include <algorithm>
#include <array>

using namespace tallyview;

namespace {

constexpr qint64 day = 86400;

// Without the local time of Qt, which would read `TZ` for others.
QDate dateAt(qint64 time, const QTimeZone &zone) {
    return QDateTime::fromSecsSinceEpoch(time, zone).date();
}

/// Whether a clock shows no `date` before `start`, however far it was turned back, and that or,
/// if it skips it, a later one from then on.
bool isStartOf(QDate date, Instant start, const QTimeZone &zone) {
    const auto time = static_cast<qint64>(start.time_since_epoch().count());
    return dateAt(time, zone) >= date &&
           std::ranges::all_of(std::array{1, 1200, 1800, 3600, 7200, 86400},
                               [&](int before) { return dateAt(time - before, zone) < date; });
}

/// Whether today, tomorrow and the week start with the first instant of their day.
bool startsAreRight(qint64 now, const QTimeZone &zone) {
    const QDate today = dateAt(now, zone);
    const auto cutoffs = CalendarCutoffs::at(Instant(std::chrono::seconds(now)), userUtcOffset());
    return isStartOf(today, cutoffs.startOfToday, zone) &&
           isStartOf(today.addDays(1), cutoffs.startOfTomorrow, zone) &&
           isStartOf(today.addDays(-6), cutoffs.week, zone);
}

} // namespace

class CalendarCutoffsTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("TZ"); }

    void daysStartWithTheirFirstInstantInEveryZone() {
        const auto begin = QDateTime::fromSecsSinceEpoch(-35 * day, QTimeZone::utc());
        const auto end = QDateTime::fromSecsSinceEpoch(24837 * day, QTimeZone::utc()); // in 2038
        int checks = 0;
        for (const QByteArray &name : QTimeZone::availableTimeZoneIds()) {
            qputenv("TZ", name);
            const QTimeZone zone(name);
            for (const auto &change : zone.transitions(begin, end)) {
                // So that today, tomorrow or the day six days ago is that of the change.
                for (const qint64 distance : {-day, qint64{-1}, qint64{0}, 6 * day}) {
                    const qint64 now = change.atUtc.toSecsSinceEpoch() + distance;
                    QVERIFY2(startsAreRight(now, zone),
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
