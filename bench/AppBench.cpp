// What the application's window costs, or a bare window of the same size, which the same renderer
// draws in the same program.
//
//   AppBench app|bare MODE AMOUNT
//
// MODE is one of
//   - start: milliseconds from the moment AMOUNT of CLOCK_MONOTONIC, in milliseconds, to the first
//     frame, and the processor time until then;
//   - memory: MiB with the list shown and read a second time, and the most at any time;
//   - scroll: milliseconds between two frames, median and 99th percentile, on the way through the
//     whole list in AMOUNT steps, and the processor time of a frame;
//   - idle: percent of a processor, wake-ups and frames in AMOUNT seconds with nothing to do;
//   - pulse: the same with one running task in view;
//   - use: the same with five.
//
// Reads the sample home that HOME names. Prints numbers divided by blanks.

#include "app/platform/FreedesktopInstance.h"
#include "app/shell/OrvikTallyviewApp.h"
#include "app/shell/SceneRenderer.h"

#include "bench/Measure.h"
#include "bench/Pair.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace tallyview;

namespace {

[[noreturn]] void fail(const char *message) {
    std::fprintf(stderr, "AppBench: %s\n", message);
    std::exit(EXIT_FAILURE);
}

QQuickWindow &onlyWindow() {
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (auto *const shown = qobject_cast<QQuickWindow *>(window)) {
            return *shown;
        }
    }
    fail("no window");
}

/// One of the two that are compared. Made without a frame having been drawn.
class Side {
public:
    Side() = default;
    Side(const Side &) = delete;
    Side &operator=(const Side &) = delete;
    virtual ~Side() = default;

    /// Until the window shows what it is to show.
    virtual void settle() {}
    /// The list with everything in it.
    virtual QQuickItem &wholeList() = 0;
    /// So that a while without a refresh begins.
    virtual void refresh() {}
    /// And no other task. There are so many.
    virtual void showRunning(std::size_t) {}
};

class BareSide : public Side {
public:
    explicit BareSide(const QString &mode) {
        const QString name = mode == u"scroll"  ? QStringLiteral("BareList")
                             : mode == u"pulse" ? QStringLiteral("BarePulse")
                                                : QStringLiteral("Bare");
        m_engine.load(QUrl(QStringLiteral("qrc:/bench/%1.qml").arg(name)));
        onlyWindow().show();
    }

    QQuickItem &wholeList() override {
        return *onlyWindow().findChild<QQuickItem *>(QStringLiteral("list"));
    }

private:
    QQmlApplicationEngine m_engine;
};

QQuickItem *itemOfType(QQuickItem *item, const char *type) {
    if (QByteArray(item->metaObject()->className()).startsWith(type)) {
        return item;
    }
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *const found = itemOfType(child, type)) {
            return found;
        }
    }
    return nullptr;
}

class AppSide : public Side {
public:
    AppSide() {
        if (!m_instance.claim(QString()) || !m_app.start(QString())) {
            fail("the application did not start");
        }
    }

    void settle() override {
        while (model().isLoading() || !model().lastSyncedAt()) {
            bench::wait(20);
        }
    }

    void refresh() override {
        model().refresh();
        settle();
    }

    void showRunning(std::size_t count) override {
        model().setRecencyFilter(TaskRecencyFilter::week);
        if (model().visibleThreads().size() != count) {
            fail("the running threads are more or less than that");
        }
    }

    QQuickItem &wholeList() override {
        model().setIncludeSubagents(true);
        model().setStatusFilter(TaskStatusFilter::all);
        model().setRecencyFilter(TaskRecencyFilter::older);
        bench::wait(1000);
        QQuickItem *const list = itemOfType(onlyWindow().contentItem(), "ThreadList_");
        if (!list || model().visibleThreads().size() != model().threads().size()) {
            fail("the list does not show all threads");
        }
        return *list;
    }

private:
    static DashboardModel &model() {
        return *onlyWindow().property("model").value<DashboardModel *>();
    }

    FreedesktopInstance m_instance;
    OrvikTallyviewApp m_app{m_instance};
};

void measureStart(double started) {
    QQuickWindow &window = onlyWindow();
    // From the thread that draws, at the moment itself.
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [started] {
            const bench::Time now = bench::Time::now();
            std::printf("%.3f %.3f\n", now.wall - started, now.processor);
            std::fflush(stdout);
            std::_Exit(EXIT_SUCCESS);
        },
        Qt::DirectConnection);
    QGuiApplication::exec();
}

void measureMemory(Side &side) {
    bench::waitForFrames(onlyWindow(), 20);
    side.refresh();
    bench::waitForFrames(onlyWindow(), 20);
    const bench::Memory memory = bench::memory();
    std::printf("%.3f %.3f\n", memory.share, memory.peak);
}

void measureScroll(Side &side, int steps) {
    QQuickItem &list = side.wholeList();
    const double start = bench::Time::now().processor;
    const auto intervals = bench::scrollIntervals(onlyWindow(), list, steps);
    const double processor = bench::Time::now().processor - start;
    std::printf("%.4f %.4f %.4f\n", bench::quantile(intervals, 0.5),
                bench::quantile(intervals, 0.99), processor / steps);
}

void measureWhile(Side &side, int seconds) {
    side.refresh();
    bench::wait(2000);
    const bench::Usage usage = bench::usageDuring(onlyWindow(), seconds * 1000);
    std::printf("%.5f %.0f %.0f\n", usage.percent, usage.wakeUps, usage.frames);
}

void measure(Side &side, const QString &mode, int amount) {
    side.settle();
    if (mode == u"memory") {
        return measureMemory(side);
    }
    if (mode == u"scroll") {
        return measureScroll(side, amount);
    }
    if (mode != u"idle") {
        side.showRunning(mode == u"pulse" ? 1 : 5);
    }
    measureWhile(side, amount);
}

} // namespace

int main(int argc, char **argv) {
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    chooseSceneRenderer();
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("org.orvik.Tallyview"));
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 3) {
        fail("which side, and what?");
    }
    const QString mode = arguments[2];
    const double amount = arguments.value(3).toDouble();
    const std::unique_ptr<Side> side = arguments[1] == u"app"
                                           ? std::unique_ptr<Side>(std::make_unique<AppSide>())
                                           : std::make_unique<BareSide>(mode);
    if (mode == u"start") {
        measureStart(amount);
    } else {
        measure(*side, mode, static_cast<int>(amount));
    }
    return EXIT_SUCCESS;
}
