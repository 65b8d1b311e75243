// What the main thread does for a key in the search field and for a refresh, with everything that
// the window shows of it worked out, but nothing drawn.
//
//   ModelBench HOME ROUNDS
//
// Changes threads of the home, which is a sample.

#include "app/platform/UrlOpener.h"
#include "app/platform/UserDefaults.h"
#include "app/presentation/DetailState.h"
#include "app/presentation/ProjectNavigation.h"
#include "app/presentation/SidebarState.h"
#include "app/presentation/ThreadIndexContent.h"
#include "app/presentation/ThreadIndexState.h"
#include "core/OrvikThreadStore.h"

#include "bench/Ratio.h"

#include <QCoreApplication>

#include <sqlite3.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <ctime>
#include <filesystem>

using namespace tallyview;

namespace {

class NoDefaults : public UserDefaults {
public:
    QVariant value(const QString &) const override { return {}; }
    void setValue(const QString &, const QVariant &) override {}
    void remove(const QString &) override {}
};

class NoOpener : public UrlOpener {
public:
    void open(const QByteArray &, const QString &) override {}
};

/// The standard workspace without a window.
struct Workspace {
    explicit Workspace(const std::filesystem::path &database)
        : model(OrvikThreadStore(database), {.defaults = defaults, .urlOpener = opener}) {
        content.setIndex(&index);
        content.setViewHeight(700);
        index.setModel(&model);
        navigation.setModel(&model);
        sidebar.setModel(&model);
        detail.setModel(&model);
        refresh();
    }

    /// Answers the milliseconds that the main thread worked once the reading had begun.
    double refresh() {
        QEventLoop loop;
        QObject::connect(&model, &DashboardModel::refreshFinished, &loop, &QEventLoop::quit);
        model.refresh();
        QCoreApplication::processEvents(); // the views show that a refresh runs
        const double start = ownMilliseconds();
        loop.exec();
        QCoreApplication::processEvents();
        return ownMilliseconds() - start;
    }

    /// Processor time of this thread: waiting for the reader costs none.
    static double ownMilliseconds() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    void showAllOlder() {
        model.setStatusFilter(TaskStatusFilter::all);
        model.setRecencyFilter(TaskRecencyFilter::older);
        QCoreApplication::processEvents();
    }

    NoDefaults defaults;
    NoOpener opener;
    DashboardModel model;
    ThreadIndexState index;
    ThreadIndexContent content;
    ProjectNavigation navigation;
    SidebarState sidebar;
    DetailState detail;
};

void benchSearch(Workspace &workspace, int rounds) {
    DashboardModel &model = workspace.model;
    workspace.showAllOlder();
    const std::string typed = "fix the";
    std::size_t length = 0;
    std::vector<std::string> texts;
    for (const ThreadRecord &thread : model.threads()) {
        texts.push_back(thread->title + " " + thread->preview + " " + thread->project + " " +
                        thread->projectPath + " " + thread->branch + " " + thread->source);
    }
    bench::compare(
        {"one key in the search field", "ICU lower-casing the texts once", 0.25}, rounds,
        [&] {
            length = length % typed.size() + 1;
            model.setQuery(typed.substr(0, length));
            QCoreApplication::processEvents();
        },
        [&] {
            for (const std::string &text : texts) {
                std::string lower;
                icu::UnicodeString::fromUTF8(text)
                    .toLower(icu::Locale::getRoot())
                    .toUTF8String(lower);
            }
        });
    model.clearFilters();
    QCoreApplication::processEvents();
}

/// Ten threads anywhere in the list get another title and have just been updated.
void changeTenThreads(sqlite3 *database, int round) {
    const std::string change = "UPDATE threads SET title = 'Changed in round " +
                               std::to_string(round) +
                               "', updated_at = unixepoch(), updated_at_ms = unixepoch() * 1000"
                               " WHERE rowid IN (SELECT rowid FROM threads ORDER BY rowid"
                               " LIMIT 10 OFFSET " +
                               std::to_string(100 * round) + ")";
    char *error = nullptr;
    if (sqlite3_exec(database, change.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
        std::fprintf(stderr, "%s\n", error);
        std::exit(EXIT_FAILURE);
    }
}

template <class Value>
double copyMilliseconds(const std::vector<Value> &values) {
    std::vector<Value> copy;
    return bench::millisecondsOf([&] { copy = values; });
}

void benchRefresh(Workspace &workspace, const std::string &path, int rounds) {
    sqlite3 *database = nullptr;
    sqlite3_open(path.c_str(), &database);
    workspace.showAllOlder();
    int round = 0;
    const auto refresh = [&] {
        changeTenThreads(database, ++round);
        return workspace.refresh();
    };
    bench::compareTimes({"applying a refresh, 10 threads changed", "copying the list's values", 3},
                        rounds, refresh, [&] {
                            std::vector<ThreadRecord::Fields> values;
                            for (const ThreadRecord &thread : workspace.model.threads()) {
                                values.push_back(*thread);
                            }
                            return copyMilliseconds(values);
                        });
    bench::compareTimes({"applying a refresh, 10 threads changed",
                         "copying the list, whose records share their data", 3},
                        rounds, refresh,
                        [&] { return copyMilliseconds(workspace.model.threads()); });
    sqlite3_close(database);
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "Usage: ModelBench HOME ROUNDS\n");
        return EXIT_FAILURE;
    }
    const std::filesystem::path database = std::filesystem::path(argv[1]) / ".orvik/state_5.sqlite";
    const int rounds = std::atoi(argv[2]);
    Workspace workspace(database);
    benchSearch(workspace, rounds);
    benchRefresh(workspace, database, rounds);
}
