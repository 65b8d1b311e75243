#pragma once

#include "app/platform/UserRegion.h"
#include "core/ThreadRecord.h"

#include <QDateTime>

#include <limits>

namespace tallyview {

/// Before every other instant; stands in for a missing one in comparisons.
inline constexpr Instant distantPast{
    std::chrono::duration<double>(-std::numeric_limits<double>::infinity())};

/// Date and time on the clock at `time`, in a value that counts as UTC.
QDateTime clockTime(Instant time, const UtcOffset &utcOffset);

/// The instants that separate the time buckets, for one moment and one clock.
///
/// A day starts with the first instant that bears its date or, if the clock skips the day, with the
/// first one of a later date.
struct CalendarCutoffs {
    Instant now;
    Instant recent;          ///< an hour ago
    Instant startOfToday;    ///< start of the day that the clock shows
    Instant startOfTomorrow; ///< start of the next calendar day
    Instant week;            ///< start of the day six calendar days before today

    static CalendarCutoffs at(Instant now, const UtcOffset &utcOffset);

    bool isToday(Instant time) const { return time >= startOfToday && time < startOfTomorrow; }
};

} // namespace tallyview
