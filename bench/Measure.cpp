#include "bench/Measure.h"

#include <QEventLoop>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>

namespace tallyview::bench {

namespace {

/// The number behind `name` in a status file of the kernel.
double statusNumber(const std::filesystem::path &file, const std::string &name) {
    std::ifstream status(file);
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) {
            return std::stod(line.substr(name.size() + 1));
        }
    }
    return 0;
}

double voluntarySwitches() {
    double sum = 0;
    for (const auto &thread : std::filesystem::directory_iterator("/proc/self/task")) {
        sum += statusNumber(thread.path() / "status", "voluntary_ctxt_switches");
    }
    return sum;
}

double processorMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto milliseconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

} // namespace

std::int64_t monotonicNanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::int64_t(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

double peakMebibytes() { return statusNumber("/proc/self/status", "VmHWM") / 1024; }

void wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void waitForFrames(QQuickWindow &window, int count) {
    QEventLoop loop;
    int left = count;
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &loop,
        [&] { --left > 0 ? window.update() : loop.quit(); }, Qt::QueuedConnection);
    window.update();
    loop.exec();
}

Usage usageDuring(QQuickWindow &window, int milliseconds) {
    std::atomic<int> frames = 0;
    QObject here;
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &here, [&] { ++frames; }, Qt::DirectConnection);
    const double switches = voluntarySwitches();
    const double processor = processorMilliseconds();
    wait(milliseconds);
    return {processorMilliseconds() - processor, voluntarySwitches() - switches,
            static_cast<double>(frames)};
}

std::vector<double> scrollIntervals(QQuickWindow &window, QQuickItem &list, int steps) {
    const double lowest = list.property("contentHeight").toDouble() - list.height();
    std::vector<double> intervals;
    std::int64_t last = monotonicNanoseconds();
    int step = 0;
    QEventLoop loop;
    const auto next = [&] {
        const std::int64_t now = monotonicNanoseconds();
        if (step > 0) {
            intervals.push_back(static_cast<double>(now - last) / 1e6);
        }
        last = now;
        if (step++ == steps) {
            loop.quit();
        } else {
            list.setProperty("contentY", lowest * step / steps);
            window.update();
        }
    };
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, next, Qt::QueuedConnection);
    window.update();
    loop.exec();
    return intervals;
}

double quantile(std::vector<double> values, double share) {
    const auto position = static_cast<double>(values.size() - 1) * share;
    const auto wanted = values.begin() + static_cast<std::ptrdiff_t>(position);
    std::nth_element(values.begin(), wanted, values.end());
    return *wanted;
}

} // namespace tallyview::bench
