#include "demo/DemoOptions.h"
#include "demo/LiveAgent.h"

#include <algorithm>
#include <csignal>
#include <cstdio>

using namespace tallyview::demo;

namespace {

int fail(const std::string &message) {
    std::fprintf(stderr, "orvik-tallyview-demo: %s\n", message.c_str());
    return 1;
}

/// Waits for a signal that asks the process to end; false when the time has passed.
bool isStopped(const sigset_t &signals, std::chrono::milliseconds wait) {
    const timespec limit{.tv_sec = wait.count() / 1000, .tv_nsec = wait.count() % 1000 * 1'000'000};
    return sigtimedwait(&signals, nullptr, &limit) > 0;
}

int live(const DemoOptions &options) {
    // Blocked rather than handled, so that a step is never cut short.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    auto agent = LiveAgent::resume(options.sample.home, options.sample.seed);
    if (!agent) {
        return fail(agent.error());
    }
    while (!isStopped(signals, options.liveInterval)) {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        const auto done =
            agent->step(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
        if (!done) {
            return fail(done.error());
        }
    }
    return 0;
}

int write(const SampleOptions &options) {
    const auto home = writeSampleHome(options);
    if (!home) {
        return fail(home.error());
    }
    const auto running = std::ranges::count(home->threads, true, &SampleThread::isRunning);
    std::printf("%zu threads, %td running, %.1f MB of rollout files: %s\n", home->threads.size(),
                running, static_cast<double>(home->rolloutBytes) / 1e6, home->database.c_str());
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    const auto options =
        parseDemoOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    if (!options) {
        std::fputs(demoUsage, options.error().empty() ? stdout : stderr);
        return options.error().empty() ? 0 : fail(options.error());
    }
    const bool isKept = options->isLive && isSampleHome(options->sample.home);
    if (const int code = isKept ? 0 : write(options->sample); code != 0) {
        return code;
    }
    return options->isLive ? live(*options) : 0;
}
