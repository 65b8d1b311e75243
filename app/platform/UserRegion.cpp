#include "app/platform/UserRegion.h"

#include <ctime>

namespace tallyview {

UtcOffset userUtcOffset() {
    tzset();
    return [](qint64 unixSeconds) -> qint64 {
        const std::time_t time = unixSeconds;
        std::tm local{};
        return localtime_r(&time, &local) ? local.tm_gmtoff : 0;
    };
}

} // namespace tallyview
