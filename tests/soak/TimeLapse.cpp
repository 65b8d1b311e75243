#include "app/presentation/DetailState.h"
#include "app/presentation/FocusGridContent.h"
#include "app/presentation/SidebarState.h"
#include "app/presentation/TaskSummary.h"
#include "app/presentation/ThreadIndexContent.h"
#include "demo/LiveAgent.h"
#include "demo/SampleHome.h"
#include "tests/support/ModelFixture.h"

#include <cstdio>
#include <ctime>
#include <iostream>
#include <malloc.h>
#include <set>

using namespace tallyview;
using namespace tallyview::test;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double longestTurn = 0.5;
#else
constexpr double longestTurn = 0.05;
#endif

constexpr std::int64_t start = 1'711'238'400; ///< a week before clocks are put forward
constexpr std::int64_t year = 366 * 86400;

void require(bool condition, const std::string &text) {
    if (!condition) {
        std::cerr << text << '\n';
        std::exit(EXIT_FAILURE);
    }
}

/// Processor time of this thread in seconds: another program at work makes no difference.
double threadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// How many descriptors and threads the process has.
std::pair<std::ptrdiff_t, std::ptrdiff_t> handles() {
    using Folder = std::filesystem::directory_iterator;
    return {std::distance(Folder("/proc/self/fd"), {}),
            std::distance(Folder("/proc/self/task"), {})};
}

/// The application without its window.
struct Dashboard : ModelFixture {
    Dashboard() {
        for (ModelObserver *each :
             std::initializer_list<ModelObserver *>{&index, &grid, &sidebar, &detail, &summary}) {
            each->setModel(&model);
        }
        content.setIndex(&index);
        content.setViewHeight(680);
        cards.setGrid(&grid);
        model.setStatusFilter(TaskStatusFilter::all);
        model.setRecencyFilter(TaskRecencyFilter::week);
        QObject::connect(&model, &DashboardModel::taskCompleted, &model,
                         [this](const ThreadRecord &thread) { announced.emplace(thread.id()); });
    }

    /// Turns the event loop until the list is shown.
    void measuredRefresh() {
        announced.clear();
        double turn = threadTime();
        for (model.refresh(); model.isLoading();) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            const double end = threadTime();
            longest = std::max(longest, end - std::exchange(turn, end));
        }
        QCoreApplication::processEvents();
        longest = std::max(longest, threadTime() - turn);
        require(!model.errorMessage(), model.errorMessage().value_or(""));
    }

    ThreadIndexState index;
    ThreadIndexContent content;
    FocusGridState grid;
    FocusGridContent cards;
    SidebarState sidebar;
    DetailState detail;
    TaskSummary summary;
    std::set<std::string> announced;
    double longest = 0;
};

std::set<std::string> running(const Dashboard &dashboard) {
    std::set<std::string> ids;
    for (const ThreadRecord &thread : dashboard.model.threads()) {
        if (thread->runState == ThreadRunState::running) {
            ids.emplace(thread.id());
        }
    }
    return ids;
}

/// The agent acts or rests, and the dashboard shows it: nothing is lost.
void step(Dashboard &dashboard, demo::LiveAgent &agent, bool acts) {
    if (acts) {
        const auto now = std::chrono::floor<std::chrono::milliseconds>(dashboard.now);
        const auto acted = agent.step(now.time_since_epoch().count());
        require(acted.has_value(), acted ? "" : acted.error());
    }
    const std::set<std::string> before = running(dashboard);
    const auto revision = dashboard.model.threadsRevision();
    dashboard.measuredRefresh();
    require(dashboard.model.threadsRevision() == revision + 1, "a refresh was lost");
    require(dashboard.model.lastSyncedAt() == dashboard.now, "a clock was not followed");
    const std::vector<std::string> wanted = agent.running();
    const std::set<std::string> after = running(dashboard);
    require(after == std::set(wanted.begin(), wanted.end()), "a state was missed");
    require(after.size() >= 3 && after.size() <= 40, "the agent does too little or too much");
    std::set<std::string> ended;
    std::ranges::set_difference(before, after, std::inserter(ended, ended.end()));
    require(dashboard.announced == ended, "an end was not told, or none was");
}

/// What a dashboard holds; nothing under a sanitizer, which sees leaks.
std::size_t held(std::unique_ptr<Dashboard> dashboard) {
    const auto with = mallinfo2().uordblks;
    dashboard.reset();
    return with - mallinfo2().uordblks;
}

} // namespace

/// Two weeks of refreshes, 33 seconds of the clock apart, of a home in which an agent works. The
/// clock is put forward for the summer, then set a year off and back, in other zones.
int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const int refreshes = argc > 1 ? std::atoi(argv[1]) : 36'000;
    const QTemporaryDir home;
    const auto makeDashboard = [&home](Instant now) {
        auto made = std::make_unique<Dashboard>();
        made->now = now;
        std::filesystem::create_directory_symlink(home.filePath(".orvik").toStdString(),
                                                  made->home.filePath(".orvik").toStdString());
        made->measuredRefresh();
        return made;
    };
    require(demo::writeSampleHome({.home = home.path().toStdString(),
                                   .threads = 300,
                                   .nowSeconds = start,
                                   .rollouts = demo::SampleRollouts::small})
                .has_value(),
            "no home");
    auto agent = demo::LiveAgent::resume(home.path().toStdString(), 7).value();
    auto dashboard = makeDashboard(Instant(std::chrono::seconds(start)));
    const auto before = handles();
    for (const auto &[zone, jump] : {std::pair("Europe/Berlin", std::int64_t{0}),
                                     {"America/New_York", year},
                                     {"Pacific/Apia", -year}}) {
        qputenv("TZ", zone);
        dashboard->utcOffset = userUtcOffset();
        dashboard->now += std::chrono::seconds(jump);
        for (int refresh = 0; refresh < refreshes / 3; ++refresh) {
            dashboard->now += std::chrono::seconds(33);
            step(*dashboard, agent, refresh % 3 > 0);
        }
    }
    require(handles() == before, "descriptors or threads are left");
    const std::size_t threads = dashboard->model.threads().size();
    const double longest = dashboard->longest;
    const Instant now = dashboard->now;
    const std::size_t old = held(std::move(dashboard));
    const std::size_t young = held(makeDashboard(now));
    std::printf("%d refreshes, %zu threads, longest turn %.1f ms, %zu KB held, %zu KB anew\n",
                refreshes, threads, longest * 1000, old / 1024, young / 1024);
    require(threads >= 300 + static_cast<std::size_t>(refreshes) / 30, "the home did not grow");
    require(longest <= longestTurn, "the main thread was held up");
    require(old <= young + young / 10 + 65'536, "memory follows more than the home's size");
    return 0;
}
