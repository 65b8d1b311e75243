#pragma once

#include "app/platform/Pasteboard.h"
#include "app/platform/UserRegion.h"
#include "core/ThreadRecord.h"

#include <QByteArray>
#include <QLocale>

#include <chrono>
#include <functional>

namespace tallyview {

class UrlOpener;
class UserDefaults;

/// The current time of the system's clock.
Instant systemNow();

/// How the user's language orders text; Chinese if no language is set.
QLocale userCollation();

/// What the dashboard takes from the world around it, so that a test can give it another one.
/// The referenced objects outlive every model built on them.
struct DashboardEnvironment {
    UserDefaults &defaults;
    UrlOpener &urlOpener;
    Pasteboard &pasteboard = generalPasteboard();
    std::function<Instant()> now = systemNow;
    std::function<UtcOffset()> utcOffset = userUtcOffset; ///< called for each evaluation
    QByteArray numberLocale = userNumberLocale();         ///< writes numbers
    QLocale collationLocale = userCollation();            ///< orders project names
    std::chrono::milliseconds refreshInterval = std::chrono::seconds(30);
};

} // namespace tallyview
