#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace tallyview::bench {

using Milliseconds = std::chrono::duration<double, std::milli>;

template <class Work>
double millisecondsOf(Work &&work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// One line for the table: name, what it is held against, both medians, and the reach.
inline void printRow(const char *what, const char *against, double ours, double theirs,
                     double reach) {
    std::printf("%s\t%s\t%.3f ms\t%.3f ms\t%.2f\t%.2f\n", what, against, ours, theirs,
                ours / theirs, reach);
    std::fflush(stdout);
}

/// Measures both sides in turn, so that what else the machine does meets both.
template <class Ours, class Theirs>
void compare(const char *what, const char *against, double reach, int rounds, Ours &&ours,
             Theirs &&theirs) {
    std::vector<double> ourTimes;
    std::vector<double> theirTimes;
    for (int i = 0; i <= rounds; ++i) {
        const double their = millisecondsOf(theirs);
        const double our = millisecondsOf(ours);
        if (i > 0) { // the first round warms up
            ourTimes.push_back(our);
            theirTimes.push_back(their);
        }
    }
    printRow(what, against, median(ourTimes), median(theirTimes), reach);
}

} // namespace tallyview::bench
