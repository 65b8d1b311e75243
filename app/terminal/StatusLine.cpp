#include "app/terminal/StatusLine.h"

#include "app/terminal/JsonReport.h"
#include "app/terminal/TerminalText.h"

#include <QString>

namespace tallyview {

namespace {

constexpr std::size_t mostTitles = 20;

std::string figure(const DashboardModel &model, TaskStatusFilter filter) {
    return std::string(title(filter)) + " " + std::to_string(model.count(filter));
}

std::string figures(const DashboardModel &model) {
    return figure(model, TaskStatusFilter::running) + " · " +
           figure(model, TaskStatusFilter::completed);
}

/// The bar reads it as markup, which a title must not be.
std::string titlesOfRunning(const DashboardModel &model) {
    std::string titles;
    std::size_t left = mostTitles;
    for (const ThreadRecord &thread : model.visibleThreads(model.currentCutoffs(), std::nullopt)) {
        if (left-- == 0) {
            return titles + "\n…";
        }
        titles += titles.empty() ? "" : "\n";
        titles += QString::fromStdString(terminalText(thread->title)).toHtmlEscaped().toStdString();
    }
    return titles;
}

} // namespace

std::string statusLine(const DashboardModel &model, const Arguments &arguments) {
    const std::size_t running = model.count(TaskStatusFilter::running);
    if (arguments.json) {
        return JsonObject()
            .add("running", static_cast<std::int64_t>(running))
            .add("completed", static_cast<std::int64_t>(model.count(TaskStatusFilter::completed)))
            .add("read_at", isoTime(model.lastSyncedAt(), model.environment().utcOffset()))
            .text();
    }
    if (arguments.format == Arguments::Format::plain) {
        return figures(model);
    }
    return JsonObject()
        .add("text", figures(model))
        .add("tooltip", running > 0 ? titlesOfRunning(model) : figures(model))
        .add("class", running > 0 ? "running" : "idle")
        .text();
}

} // namespace tallyview
