// What the main thread does for a key in the search field and for a refresh, with everything that
// the window shows of it worked out, but nothing drawn.
//
//   ModelBench HOME ROUNDS

#include "app/model/DetailState.h"
#include "app/model/ProjectNavigation.h"
#include "app/model/SidebarState.h"
#include "app/model/ThreadIndexContent.h"
#include "app/model/ThreadIndexState.h"
#include "app/platform/UrlOpener.h"
#include "app/platform/UserDefaults.h"
#include "core/OrvikThreadStore.h"

#include "bench/Ratio.h"

#include <QCoreApplication>

#include <unicode/locid.h>
#include <unicode/unistr.h>

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

    void refresh() {
        QEventLoop loop;
        QObject::connect(&model, &DashboardModel::refreshFinished, &loop, &QEventLoop::quit);
        model.refresh();
        loop.exec();
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
    model.setStatusFilter(TaskStatusFilter::all);
    model.setRecencyFilter(TaskRecencyFilter::older);
    QCoreApplication::processEvents();
    const std::string typed = "fix the";
    std::size_t length = 0;
    std::vector<std::string> texts;
    for (const ThreadRecord &thread : model.threads()) {
        texts.push_back(thread->title + " " + thread->preview + " " + thread->project + " " +
                        thread->projectPath + " " + thread->branch + " " + thread->source);
    }
    bench::compare(
        "one key in the search field", "ICU lower-casing the texts once", 0.25, rounds,
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

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "Usage: ModelBench HOME ROUNDS\n");
        return EXIT_FAILURE;
    }
    Workspace workspace(std::filesystem::path(argv[1]) / ".orvik/state_5.sqlite");
    benchSearch(workspace, std::atoi(argv[2]));
}
