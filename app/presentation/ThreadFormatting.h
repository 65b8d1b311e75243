#pragma once

#include "app/model/CalendarCutoffs.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

/// How the views write times and counts.
namespace tallyview::ThreadFormatting {

/// "2024/03/07 09:05" as the clock shows it; "未知" for an absent instant.
QString full(std::optional<Instant> date, const UtcOffset &utcOffset);

/// How long ago `date` was, seen from `now`: "5 分钟前"; month and day after a week;
/// "时间未知" for an absent instant.
QString relative(std::optional<Instant> date, Instant now, const UtcOffset &utcOffset);

/// Writes a number in decimal digits.
using Number = std::function<QString(std::int64_t)>;

/// In the digits and groups of the language and region of `locale` ("de_CH.UTF-8"); in plain digits
/// if ICU fails. To be made once and kept.
Number numberIn(const QByteArray &locale);

} // namespace tallyview::ThreadFormatting
