#include "app/presentation/DetailState.h"
#include "app/presentation/FocusGridContent.h"
#include "app/presentation/SidebarState.h"
#include "app/presentation/TaskSummary.h"
#include "app/presentation/ThreadIndexContent.h"
#include "demo/LiveAgent.h"
#include "demo/SampleHome.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/TemporaryHome.h"

#include <cstdio>
#include <ctime>
#include <iostream>
#include <malloc.h>
#include <memory>
#include <set>

using namespace tallyview;
using namespace tallyview::test;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double longestTurn = 0.5;
#else
constexpr double longestTurn = 0.05;
#endif

/// Processor time of the main thread in seconds: another program at work makes no difference.
double mainThreadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::ptrdiff_t entries(const char *folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

void require(bool condition, const std::string &text) {
    if (!condition) {
        std::cerr << text << '\n';
        std::exit(EXIT_FAILURE);
    }
}

/// The application without its window.
struct Dashboard {
    Dashboard(const std::filesystem::path &database, const Instant &now)
        : model(OrvikThreadStore(database), {.defaults = defaults,
                                             .urlOpener = opener,
                                             .pasteboard = pasteboard,
                                             .now = [&now] { return now; }}) {
        model.setStatusFilter(TaskStatusFilter::all);
        model.setRecencyFilter(TaskRecencyFilter::week);
        index.setModel(&model);
        content.setIndex(&index);
        content.setViewHeight(680);
        grid.setModel(&model);
        cards.setGrid(&grid);
        sidebar.setModel(&model);
        detail.setModel(&model);
        summary.setModel(&model);
        QObject::connect(&model, &DashboardModel::taskCompleted, &model,
                         [this](const ThreadRecord &thread) { announced.insert(thread.id()); });
        QObject::connect(&model, &DashboardModel::refreshFinished, &model, [this] { ++finished; });
    }

    /// Returns what the longest turn of the event loop took.
    double refresh() {
        double longest = 0;
        announced.clear();
        const auto end = finished + 1;
        double turn = mainThreadTime();
        model.refresh();
        do {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            longest = std::max(longest, mainThreadTime() - std::exchange(turn, mainThreadTime()));
        } while (finished < end);
        QCoreApplication::processEvents(); // what follows the model
        return std::max(longest, mainThreadTime() - turn);
    }

    std::set<std::string> running() const {
        std::set<std::string> ids;
        for (const ThreadRecord &thread : model.threads()) {
            if (thread->runState == ThreadRunState::running) {
                ids.insert(thread.id());
            }
        }
        return ids;
    }

    MemoryDefaults defaults;
    RecordingOpener opener;
    MemoryPasteboard pasteboard;
    DashboardModel model;
    ThreadIndexState index;
    ThreadIndexContent content;
    FocusGridState grid;
    FocusGridContent cards;
    SidebarState sidebar;
    DetailState detail;
    TaskSummary summary;
    std::set<std::string> announced;
    std::size_t finished = 0;
};

/// What a dashboard of the home as it is now holds; nothing under a sanitizer, which sees leaks.
std::size_t held(std::unique_ptr<Dashboard> dashboard) {
    const auto with = mallinfo2().uordblks;
    dashboard.reset();
    return with - mallinfo2().uordblks;
}

class TimeLapse {
public:
    explicit TimeLapse(int refreshes) : m_refreshes(refreshes) {}

    void run() {
        int slow = 0;
        double longest = 0;
        for (int refresh = 0; refresh < m_refreshes; ++refresh) {
            const double turn = step(refresh);
            longest = std::max(longest, turn);
            slow += turn > longestTurn ? 1 : 0;
        }
        const auto threads = m_dashboard->model.threads().size();
        require(threads >= m_threads + static_cast<std::size_t>(m_refreshes) / 30, "no growth");
        require(entries("/proc/self/fd") == m_descriptors, "descriptors were left open");
        require(entries("/proc/self/task") == m_tasks, "threads were left behind");
        const std::size_t old = held(std::move(m_dashboard));
        auto fresh = std::make_unique<Dashboard>(m_database, m_now);
        fresh->refresh();
        const std::size_t young = held(std::move(fresh));
        std::printf("%d refreshes, %zu threads, longest turn %.1f ms, %zu KB held, %zu KB anew\n",
                    m_refreshes, threads, longest * 1000, old / 1024, young / 1024);
        require(slow == 0, "the main thread was held up " + std::to_string(slow) + " times");
        require(old <= young + young / 10 + 65'536, "memory follows more than the home's size");
    }

private:
    /// The agent acts, and the dashboard shows it: nothing is lost.
    double step(int refresh) {
        using std::chrono::seconds;
        if (refresh == m_refreshes / 3 || refresh == m_refreshes * 2 / 3) {
            m_now += seconds(refresh == m_refreshes / 3 ? year : -year);
            qputenv("TZ", refresh == m_refreshes / 3 ? "America/New_York" : "Pacific/Apia");
        }
        m_now += seconds(33);
        const auto milliseconds =
            static_cast<std::int64_t>(m_now.time_since_epoch().count()) * 1000;
        for (int acts = refresh % 2; acts >= 0; --acts) {
            const auto acted = m_agent.step(milliseconds);
            require(acted.has_value(), acted ? "" : acted.error());
        }
        const std::set<std::string> before = m_dashboard->running();
        const double turn = m_dashboard->refresh();
        const DashboardModel &model = m_dashboard->model;
        require(!model.errorMessage(), model.errorMessage().value_or(""));
        require(model.threadsRevision() == static_cast<std::uint64_t>(refresh) + 2,
                "none was read");
        require(model.lastSyncedAt() == m_now, "a clock was not followed");
        const std::vector<std::string> wanted = m_agent.running();
        const std::set<std::string> running = m_dashboard->running();
        require(running == std::set(wanted.begin(), wanted.end()), "a state was missed");
        std::set<std::string> ended;
        std::ranges::set_difference(before, running, std::inserter(ended, ended.end()));
        require(m_dashboard->announced == ended, "an end was not told or told twice");
        return turn;
    }

    static constexpr std::int64_t year = 366 * 86400;
    static constexpr std::int64_t start = 1'711'238'400; ///< a week before clocks are put forward
    static constexpr std::size_t m_threads = 300;

    int m_refreshes;
    Instant m_now{std::chrono::seconds(start)};
    tests::TemporaryHome m_home;
    std::filesystem::path m_database =
        demo::writeSampleHome({.home = m_home.path(),
                               .threads = m_threads,
                               .nowSeconds = start,
                               .rollouts = demo::SampleRollouts::small})
            .value()
            .database;
    demo::LiveAgent m_agent = demo::LiveAgent::resume(m_home.path(), 7).value();
    std::unique_ptr<Dashboard> m_dashboard = [this] {
        auto dashboard = std::make_unique<Dashboard>(m_database, m_now);
        dashboard->refresh();
        return dashboard;
    }();
    std::ptrdiff_t m_descriptors = entries("/proc/self/fd");
    std::ptrdiff_t m_tasks = entries("/proc/self/task");
};

} // namespace

/// Two weeks of refreshes, 33 seconds of the clock apart, of a home in which an agent works. The
/// clock is put forward for the summer, then set a year off and back, in other zones.
int main(int argc, char **argv) {
    qputenv("TZ", "Europe/Berlin");
    const QCoreApplication application(argc, argv);
    TimeLapse(argc > 1 ? std::atoi(argv[1]) : 36'000).run();
    return 0;
}
