#pragma once

#include <QByteArray>

#include <functional>

/// What the user has set about the region. Main thread.
namespace tallyview {

/// How many seconds a clock is ahead of UTC at a time in Unix seconds.
using UtcOffset = std::function<qint64(qint64)>;

/// The user's clock: that of `TZ`, whichever form it has, or of the system, also when its zone was
/// changed while the process ran. The zone is looked up in this call, not in those of the result.
UtcOffset userUtcOffset();

/// The language and region in which the user reads numbers, named as the environment names them
/// ("de_CH.UTF-8"); that of the interface, "zh_CN", where none is set.
QByteArray userNumberLocale();

} // namespace tallyview
