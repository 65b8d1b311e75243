#pragma once

#include "core/ThreadRecord.h"

#include <QTimeZone>

#include <limits>

namespace tallyview {

/// Before every other instant; stands in for a missing one in comparisons.
inline constexpr Instant distantPast{
    std::chrono::duration<double>(-std::numeric_limits<double>::infinity())};

/// The instants that separate the time buckets, for one moment and one time zone.
struct CalendarCutoffs {
    Instant now;
    Instant recent;          ///< an hour ago
    Instant startOfToday;    ///< start of the calendar day
    Instant startOfTomorrow; ///< start of the next calendar day
    Instant week;            ///< start of the day six calendar days before today

    static CalendarCutoffs at(Instant now, const QTimeZone &timeZone);

    bool isToday(Instant time) const { return time >= startOfToday && time < startOfTomorrow; }
};

} // namespace tallyview
