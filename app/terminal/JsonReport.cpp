#include "app/terminal/JsonReport.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace tallyview {

namespace {

std::optional<std::string_view> ifKnown(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

} // namespace

std::optional<std::string> isoTime(std::optional<Instant> time, const UtcOffset &utcOffset) {
    using namespace std::chrono;
    constexpr double earliest = -62'167'219'200; // the year 0
    constexpr double latest = 253'402'300'799;   // the end of the year 9999
    const double seconds = time ? time->time_since_epoch().count() : latest + 1;
    if (seconds < earliest || seconds > latest) {
        return std::nullopt;
    }
    const auto offset = minutes(utcOffset(static_cast<qint64>(std::floor(seconds))) / 60);
    const sys_time<milliseconds> local(milliseconds(std::llround(seconds * 1000)) + offset);
    const auto day = floor<days>(local);
    const year_month_day date(day);
    const hh_mm_ss clock(local - day);
    const hh_mm_ss distance(offset);
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03d%c%02d:%02d",
                  int(date.year()), unsigned(date.month()), unsigned(date.day()),
                  int(clock.hours().count()), int(clock.minutes().count()),
                  int(clock.seconds().count()), int(clock.subseconds().count()),
                  distance.is_negative() ? '-' : '+', int(distance.hours().count()),
                  int(distance.minutes().count()));
    return text.data();
}

JsonObject threadJson(const ThreadRecord &thread, const DashboardModel &model,
                      const UtcOffset &utcOffset) {
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
    const UtcOffset utcOffset = model.environment().utcOffset();
    std::string json = "[";
    for (const ThreadTimeGroup &group : listing.groups) {
        for (const ThreadRecord &thread : group.threads) {
            if (limit == 0) {
                break;
            }
            --limit;
            json += json.size() > 1 ? ",\n" : "";
            json += threadJson(thread, model, utcOffset).add("group", group.id).text();
        }
    }
    return json + "]\n";
}

} // namespace tallyview
