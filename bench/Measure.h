#pragma once

#include <vector>

class QQuickItem;
class QQuickWindow;

/// What a window costs. Main thread; the functions that wait run the event loop meanwhile.
namespace tallyview::bench {

/// Of the process, in MiB.
struct Memory {
    double share = 0; ///< its part of what it shares with others, and all of the rest
    double peak = 0;  ///< most that it has had at any time
};
Memory memory();

/// What the process has used in a while.
struct Usage {
    double percent = 0; ///< of a processor, all threads together
    double wakeUps = 0; ///< voluntary context switches of the threads that live
    double frames = 0;
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
