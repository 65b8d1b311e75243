#include "app/terminal/JsonReport.h"

#include <QTimeZone>

#include <cmath>

namespace tallyview {

namespace {

std::optional<std::string> ifKnown(const std::string &text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

} // namespace

std::optional<std::string> isoTime(std::optional<Instant> time, const UtcOffset &utcOffset) {
    constexpr double farthest = 9e12; // later than any year of four digits, earlier than overflow
    if (!time || std::abs(time->time_since_epoch().count()) > farthest) {
        return std::nullopt;
    }
    const double seconds = time->time_since_epoch().count();
    const auto offset = static_cast<int>(utcOffset(static_cast<qint64>(std::floor(seconds))));
    const QString text =
        QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000), QTimeZone::utc())
            .toOffsetFromUtc(offset)
            .toString(Qt::ISODateWithMs);
    return ifKnown(text.toStdString());
}

JsonObject threadJson(const ThreadRecord &thread, const DashboardModel &model) {
    const UtcOffset utcOffset = model.environment().utcOffset();
    JsonObject json;
    json.add("id", thread.id())
        .add("state", rawValue(stateOf(thread)))
        .add("title", thread->title)
        .add("preview", thread->preview)
        .add("project", thread->project)
        .add("directory", ifKnown(thread->projectPath))
        .add("source", thread->source)
        .add("model", ifKnown(thread->model))
        .add("reasoning_effort", ifKnown(thread->reasoningEffort))
        .add("branch", ifKnown(thread->branch))
        .add("tokens", thread->tokensUsed)
        .add("created_at", isoTime(thread->createdAt, utcOffset))
        .add("updated_at", isoTime(thread->updatedAt, utcOffset))
        .add("archived", thread->archived)
        .add("subagent", thread->isSubagent)
        .add("pinned", model.pinnedIDs().contains(thread.id()));
    return json;
}

std::string listingJson(const Listing &listing, const DashboardModel &model, std::size_t limit) {
    std::string json = "[";
    for (const ThreadTimeGroup &group : listing.groups) {
        for (const ThreadRecord &thread : group.threads) {
            if (limit == 0) {
                break;
            }
            --limit;
            json += json.size() > 1 ? ",\n" : "";
            json += threadJson(thread, model).add("group", group.id).text();
        }
    }
    return json + "]\n";
}

} // namespace tallyview
