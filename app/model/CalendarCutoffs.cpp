#include "app/model/CalendarCutoffs.h"

#include <QTimeZone>

#include <algorithm>
#include <cmath>

namespace tallyview {

namespace {

constexpr qint64 daySeconds = 86400;

/// The first second after `before` at which the clock is ahead by `offset`, as it is at `time`.
qint64 firstWith(qint64 offset, qint64 before, qint64 time, const UtcOffset &utcOffset) {
    while (time - before > 1) {
        const qint64 middle = before + (time - before) / 2;
        (utcOffset(middle) == offset ? time : before) = middle;
    }
    return time;
}

/// The first second whose date is `day` or, if the clock skips `day`, later.
///
/// Assumes that the clock changes at most once from a day before to a day after; none has ever done
/// otherwise.
qint64 startOfDay(QDate day, const UtcOffset &utcOffset) {
    const qint64 midnight = QDate(1970, 1, 1).daysTo(day) * daySeconds;
    const qint64 before = utcOffset(midnight - daySeconds);
    const qint64 after = utcOffset(midnight + daySeconds);
    // A clock turned back to or past midnight shows it twice, first with the old offset.
    for (const qint64 offset : {before, after}) {
        if (utcOffset(midnight - offset) == offset) {
            return midnight - offset;
        }
    }
    return firstWith(after, midnight - after, midnight - before, utcOffset);
}

} // namespace

QDateTime clockTime(Instant time, const UtcOffset &utcOffset) {
    // A damaged row may hold any number; the calendar ends somewhere.
    constexpr double latest = 8.64e12;
    const auto seconds = static_cast<qint64>(
        std::clamp(std::floor(time.time_since_epoch().count()), -latest, latest));
    return QDateTime::fromSecsSinceEpoch(seconds + utcOffset(seconds), QTimeZone::utc());
}

CalendarCutoffs CalendarCutoffs::at(Instant now, const UtcOffset &utcOffset) {
    const auto startOf = [&utcOffset](QDate day) {
        return Instant(std::chrono::seconds(startOfDay(day, utcOffset)));
    };
    const QDate today = clockTime(now, utcOffset).date();
    const QDate weekStart = today.addDays(-6);
    CalendarCutoffs cutoffs;
    cutoffs.now = now;
    cutoffs.recent = now - std::chrono::seconds(3600);
    cutoffs.startOfToday = startOf(today);
    cutoffs.startOfTomorrow = startOf(today.addDays(1));
    cutoffs.week = weekStart.isValid() ? startOf(weekStart) : cutoffs.startOfToday;
    return cutoffs;
}

} // namespace tallyview
