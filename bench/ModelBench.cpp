// What the main thread does for a key in the search field and for a refresh, with everything that
// the window shows of it worked out, but nothing drawn.
//
//   ModelBench HOME PAIR ROUNDS
//
// PAIR is one of
//   - key: another query, against lower-casing the searched texts once;
//   - apply: a refresh after which ten threads differ, in the main thread's processor time alone,
//     against copying the values of the list.
//
// Prints one line a round. Changes threads of the home, which is a sample.

#include "app/platform/UrlOpener.h"
#include "app/platform/UserDefaults.h"
#include "app/presentation/DetailState.h"
#include "app/presentation/ProjectNavigation.h"
#include "app/presentation/SidebarState.h"
#include "app/presentation/ThreadIndexContent.h"
#include "app/presentation/ThreadIndexState.h"
#include "core/OrvikThreadStore.h"

#include "bench/Pair.h"

#include <QCoreApplication>

#include <sqlite3.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <array>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

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

/// Of this thread alone: waiting for the reader costs it nothing, and no wall time is told.
template <class Work>
bench::Time ownTimeOf(Work work) {
    const auto milliseconds = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    };
    const double start = milliseconds();
    work();
    return {.processor = milliseconds() - start};
}

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

    /// What the main thread worked once the reading had begun.
    bench::Time refresh() {
        QEventLoop loop;
        QObject::connect(&model, &DashboardModel::refreshFinished, &loop, &QEventLoop::quit);
        model.refresh();
        QCoreApplication::processEvents(); // the views show that a refresh runs
        return ownTimeOf([&] {
            loop.exec();
            QCoreApplication::processEvents();
        });
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
        std::string &text = texts.emplace_back();
        for (const std::string_view part : {thread->title, thread->preview, thread->project,
                                            thread->projectPath, thread->branch, thread->source}) {
            text.append(part) += ' ';
        }
    }
    bench::compare(
        rounds,
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
}

/// A thread as a list of plain values would hold it.
struct PlainThread {
    explicit PlainThread(const ThreadRecord::Fields &fields)
        : texts{std::string(fields.id),          std::string(fields.title),
                std::string(fields.preview),     std::string(fields.project),
                std::string(fields.projectPath), std::string(fields.source),
                std::string(fields.model),       std::string(fields.reasoningEffort),
                std::string(fields.branch)}
        , tokensUsed(fields.tokensUsed)
        , createdAt(fields.createdAt)
        , updatedAt(fields.updatedAt)
        , archived(fields.archived)
        , isSubagent(fields.isSubagent)
        , runState(fields.runState) {}

    std::array<std::string, 9> texts;
    std::int64_t tokensUsed;
    std::optional<Instant> createdAt;
    std::optional<Instant> updatedAt;
    bool archived;
    bool isSubagent;
    ThreadRunState runState;
};

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

void benchRefresh(Workspace &workspace, const std::string &path, int rounds) {
    sqlite3 *database = nullptr;
    sqlite3_open(path.c_str(), &database);
    workspace.showAllOlder();
    int round = 0;
    const auto refresh = [&] {
        changeTenThreads(database, ++round);
        return workspace.refresh();
    };
    std::vector<PlainThread> values;
    for (const ThreadRecord &thread : workspace.model.threads()) {
        values.emplace_back(*thread);
    }
    bench::compare(rounds, refresh, [&] {
        std::vector<PlainThread> copy;
        return ownTimeOf([&] { copy = values; });
    });
    sqlite3_close(database);
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const std::string_view pair = argc == 4 ? argv[2] : "";
    if (pair != "key" && pair != "apply") {
        std::fprintf(stderr, "Usage: ModelBench HOME key|apply ROUNDS\n");
        return EXIT_FAILURE;
    }
    const std::filesystem::path database = std::filesystem::path(argv[1]) / ".orvik/state_5.sqlite";
    const int rounds = std::atoi(argv[3]);
    Workspace workspace(database);
    if (pair == "key") {
        benchSearch(workspace, rounds);
    } else {
        benchRefresh(workspace, database, rounds);
    }
    return EXIT_SUCCESS;
}
