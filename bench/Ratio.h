#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

/// Two sides measured in turn. What is printed is read by bench/report.py.
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

/// A row of the table: what is measured, what it is held against, and the largest ratio that it
/// is to reach.
struct Row {
    const char *what;
    const char *against;
    double reach;
};

/// One line of fields divided by tabs: the row, both medians and their unit.
inline void print(const Row &row, double ours, double theirs) {
    std::printf("%s\t%s\t%g\t%.6f\t%.6f\tms\n", row.what, row.against, row.reach, ours, theirs);
    std::fflush(stdout);
}

/// Each side is called in turn and answers how many milliseconds it took, so that what else the
/// machine does meets both. The first of the rounds only warms up.
template <class Ours, class Theirs>
void compareTimes(const Row &row, int rounds, Ours &&ours, Theirs &&theirs) {
    std::vector<double> ourTimes;
    std::vector<double> theirTimes;
    for (int i = 0; i <= rounds; ++i) {
        const double their = theirs();
        const double our = ours();
        if (i > 0) {
            ourTimes.push_back(our);
            theirTimes.push_back(their);
        }
    }
    print(row, median(ourTimes), median(theirTimes));
}

/// The same for sides that only do their work.
template <class Ours, class Theirs>
void compare(const Row &row, int rounds, Ours &&ours, Theirs &&theirs) {
    compareTimes(
        row, rounds, [&] { return millisecondsOf(ours); }, [&] { return millisecondsOf(theirs); });
}

} // namespace tallyview::bench
