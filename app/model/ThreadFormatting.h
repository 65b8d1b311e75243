#pragma once

#include "core/ThreadRecord.h"

#include <QString>
#include <QTimeZone>

#include <cstdint>
#include <optional>

/// How the views write times and counts.
namespace tallyview::ThreadFormatting {

/// "2024/03/07 09:05" in `timeZone`; "未知" for an absent instant.
QString full(std::optional<Instant> date, const QTimeZone &timeZone);

/// How long ago `date` was, seen from `now`: "5 分钟前"; month and day after a week;
/// "时间未知" for an absent instant.
QString relative(std::optional<Instant> date, Instant now, const QTimeZone &timeZone);

/// Decimal digits, grouped as in the user's current locale.
QString number(std::int64_t value);

} // namespace tallyview::ThreadFormatting
