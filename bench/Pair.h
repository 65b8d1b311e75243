#pragma once

#include <chrono>
#include <concepts>
#include <cstdio>
#include <sys/resource.h>

/// Two sides measured in turn. What is printed is read by bench/report.py.
namespace tallyview::bench {

/// Milliseconds.
struct Time {
    double wall = 0;
    double processor = 0; ///< of all threads together, in the program and in the kernel

    /// On the clock that only moves forward, and what the process has used since it started.
    static Time now() {
        const auto clock = std::chrono::steady_clock::now().time_since_epoch();
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        const auto milliseconds = [](const timeval &time) {
            return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
        };
        return {std::chrono::duration<double, std::milli>(clock).count(),
                milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime)};
    }
};

/// What the work takes; a side that measures itself answers it.
template <class Work>
Time timeOf(Work &work) {
    if constexpr (requires {
                      { work() } -> std::same_as<Time>;
                  }) {
        return work();
    } else {
        const Time start = Time::now();
        work();
        const Time end = Time::now();
        return {end.wall - start.wall, end.processor - start.processor};
    }
}

/// Runs both sides in each round, the one and the other first by turns, so that what else the
/// machine does meets both. Prints a line a round: our wall and processor time, and theirs. One
/// more round in the beginning only warms up.
template <class Ours, class Theirs>
void compare(int rounds, Ours ours, Theirs theirs) {
    for (int round = 0; round <= rounds; ++round) {
        Time our = round % 2 == 0 ? timeOf(ours) : Time();
        const Time their = timeOf(theirs);
        if (round % 2 != 0) {
            our = timeOf(ours);
        }
        if (round > 0) {
            std::printf("%.6f %.6f %.6f %.6f\n", our.wall, our.processor, their.wall,
                        their.processor);
        }
    }
}

} // namespace tallyview::bench
