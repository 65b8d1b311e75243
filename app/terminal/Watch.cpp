#include "app/terminal/Watch.h"

#include "app/presentation/ThreadFormatting.h"
#include "app/presentation/ThreadRows.h"
#include "app/terminal/Complaint.h"
#include "app/terminal/DisplayWidth.h"
#include "app/terminal/JsonReport.h"
#include "app/terminal/TerminalText.h"

#include <QSocketNotifier>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyview {

Watch::Watch(DashboardModel &model, const Arguments &arguments, Output &output, Paint paint)
    : m_model(model)
    , m_arguments(arguments)
    , m_output(output)
    , m_paint(paint)
    , m_left(arguments.limit) {
    if (output.isScreen() && !arguments.json) {
        m_screen.emplace(output);
        connect(&*m_screen, &Screen::disturbed, this, &Watch::draw);
    } else {
        followReader();
    }
    connect(&model, &DashboardModel::refreshFinished, this, &Watch::showRefresh);
}

/// A pipe tells its writer when the reader has gone as if there were something to read.
void Watch::followReader() {
    struct stat status {};
    if (fstat(STDOUT_FILENO, &status) == 0 && S_ISFIFO(status.st_mode)) {
        auto *notifier = new QSocketNotifier(STDOUT_FILENO, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &Watch::ended);
    }
}

void Watch::showRefresh() {
    const std::optional<std::string> &error = m_model.errorMessage();
    if (m_screen) {
        draw();
    } else if (!error) {
        writeChanges();
    } else if (m_told != error) {
        complain(*error);
    }
    m_told = error;
    if (m_output.error() != 0 || !m_output.hasReader() || m_left == 0) {
        emit ended();
    }
}

void Watch::draw() {
    const Output::Size size = m_output.size();
    std::vector<std::string> lines;
    if (const auto &error = m_model.errorMessage()) {
        lines.push_back(m_paint(cutTo(terminalText(*error), size.columns), Tone::strong));
    }
    const Listing listing = listingOf(m_model, m_arguments);
    if (listing.groups.empty() && m_model.lastSyncedAt()) {
        lines.push_back(cutTo(emptyListTitle().toStdString(), size.columns));
    }
    const auto table = tableLines(
        listing, ShortIDs(m_model.threads()), m_model.environment().utcOffset(),
        std::min(m_arguments.limit, size.rows), {.columns = size.columns, .paint = m_paint});
    lines.insert(lines.end(), table.begin(), table.end());
    m_screen->show(lines);
}

void Watch::writeChanges() {
    const auto visible =
        m_model.visibleThreads(m_model.currentCutoffs(), recencyOf(m_model, m_arguments));
    for (const ThreadRecord &thread : visible) {
        const bool isRunning = stateOf(thread) == ThreadRunState::running;
        if (m_running && m_left > 0 && isRunning != m_running->contains(thread.id())) {
            writeChange(thread);
            --m_left;
        }
    }
    m_running.emplace();
    for (const ThreadRecord &thread : m_model.threads()) {
        if (stateOf(thread) == ThreadRunState::running) {
            m_running->emplace(thread.id());
        }
    }
}

void Watch::writeChange(const ThreadRecord &thread) {
    const bool hasStarted = stateOf(thread) == ThreadRunState::running;
    const Instant now = m_model.environment().now();
    const UtcOffset utcOffset = m_model.environment().utcOffset();
    if (m_arguments.json) {
        m_output.write(JsonObject()
                           .add("event", hasStarted ? "started" : "completed")
                           .add("at", isoTime(now, utcOffset))
                           .add("thread", threadJson(thread, m_model, utcOffset))
                           .text() +
                       "\n");
        return;
    }
    const std::string time = ThreadFormatting::full(now, utcOffset).toStdString();
    m_output.write(
        time + "  " + m_paint(title(stateOf(thread)), hasStarted ? Tone::running : Tone::faint) +
        "  " + terminalText(thread->project) + "  " + terminalText(thread->title) + "\n");
}

} // namespace tallyview
