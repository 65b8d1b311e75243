#include "app/model/CalendarCutoffs.h"

#include <QDateTime>

#include <cmath>

namespace tallyview {

namespace {

Instant startOfDay(QDate day, const QTimeZone &timeZone) {
    const QDateTime start = day.startOfDay(timeZone);
    return Instant(
        std::chrono::duration<double>(static_cast<double>(start.toMSecsSinceEpoch()) / 1000.0));
}

} // namespace

CalendarCutoffs CalendarCutoffs::at(Instant now, const QTimeZone &timeZone) {
    const auto milliseconds =
        static_cast<qint64>(std::floor(now.time_since_epoch().count() * 1000.0));
    const QDate today = QDateTime::fromMSecsSinceEpoch(milliseconds, timeZone).date();
    const QDate weekStart = today.addDays(-6);
    CalendarCutoffs cutoffs;
    cutoffs.now = now;
    cutoffs.recent = now - std::chrono::seconds(3600);
    cutoffs.startOfToday = startOfDay(today, timeZone);
    cutoffs.startOfTomorrow = startOfDay(today.addDays(1), timeZone);
    cutoffs.week = weekStart.isValid() ? startOfDay(weekStart, timeZone) : cutoffs.startOfToday;
    return cutoffs;
}

} // namespace tallyview
