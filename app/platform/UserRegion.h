#pragma once

#include <QtGlobal>

#include <functional>

/// What the user has set about the region. Main thread.
namespace tallyview {

/// How many seconds a clock is ahead of UTC at a time in Unix seconds.
using UtcOffset = std::function<qint64(qint64)>;

/// The user's clock: that of `TZ`, whichever form it has, or of the system, also when its zone was
/// changed while the process ran. The zone is looked up in this call, not in those of the result.
UtcOffset userUtcOffset();

} // namespace tallyview
