#pragma once

#include "app/terminal/JsonObject.h"
#include "app/terminal/Listing.h"

#include <string>

/// What `--json` puts out; docs/formats.md tells the fields.
namespace tallyview {

/// `utcOffset` is the model's, whose making costs system calls.
JsonObject threadJson(const ThreadRecord &thread, const DashboardModel &model,
                      const UtcOffset &utcOffset);

/// An array of at most `limit` threads.
std::string listingJson(const Listing &listing, const DashboardModel &model, std::size_t limit);

/// "2024-03-07T09:05:00.250+08:00" as the clock shows it; nothing for an absent instant and where
/// years have no four digits.
std::optional<std::string> isoTime(std::optional<Instant> time, const UtcOffset &utcOffset);

} // namespace tallyview
