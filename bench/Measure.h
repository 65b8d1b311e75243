#pragma once

#include <cstdint>
#include <vector>

class QQuickItem;
class QQuickWindow;

/// What a window costs. Main thread; the functions that wait run the event loop meanwhile.
namespace tallyview::bench {

/// Nanoseconds of CLOCK_MONOTONIC.
std::int64_t monotonicNanoseconds();

/// Most memory that the process has had at any time, in MiB.
double peakMebibytes();

/// What the process has used since it started.
struct Usage {
    double milliseconds = 0; ///< processor time of all threads
    double wakeUps = 0;      ///< voluntary context switches of the threads that live
    double frames = 0;       ///< counted from the first call on
};

void wait(int milliseconds);
void waitForFrames(QQuickWindow &window, int count);
/// What `milliseconds` of doing nothing cost.
Usage usageDuring(QQuickWindow &window, int milliseconds);

/// Scrolls from top to bottom in equal steps, one a frame; the times between frames in
/// milliseconds.
std::vector<double> scrollIntervals(QQuickWindow &window, QQuickItem &list, int steps);

/// `share` of the values, 0 to 1, are at most so large. There are some.
double quantile(std::vector<double> values, double share);

} // namespace tallyview::bench
