#include "bench/Measure.h"

#include "bench/Pair.h"

#include <QEventLoop>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>

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

} // namespace

Memory memory() {
    return {statusNumber("/proc/self/smaps_rollup", "Pss") / 1024,
            statusNumber("/proc/self/status", "VmHWM") / 1024};
}

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
    const Time start = Time::now();
    wait(milliseconds);
    const Time end = Time::now();
    return {100 * (end.processor - start.processor) / (end.wall - start.wall),
            voluntarySwitches() - switches, static_cast<double>(frames)};
}

std::vector<double> scrollIntervals(QQuickWindow &window, QQuickItem &list, int steps) {
    const double lowest = list.property("contentHeight").toDouble() - list.height();
    std::vector<double> intervals;
    double last = Time::now().wall;
    int step = 0;
    QEventLoop loop;
    const auto next = [&] {
        const double now = Time::now().wall;
        if (step > 0) {
            intervals.push_back(now - last);
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
