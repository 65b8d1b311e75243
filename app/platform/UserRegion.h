#pragma once

#include <QByteArray>

#include <functional>

/// The user's regional settings. Main thread.
namespace tallyview {

/// How many seconds a clock is ahead of UTC at a time in Unix seconds.
using UtcOffset = std::function<qint64(qint64)>;

/// The user's clock: that of `TZ`, in any of its forms, or the system's, even if its zone was
/// changed while the process ran. This call looks the zone up, calls of the result do not.
UtcOffset userUtcOffset();

/// The language and region in which the user reads numbers, named as the environment names them
/// ("de_CH.UTF-8"); if none is set, the interface's own, "zh_CN".
QByteArray userNumberLocale();

} // namespace tallyview
