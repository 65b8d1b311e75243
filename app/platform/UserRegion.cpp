#include "app/platform/UserRegion.h"

#include <QByteArrayList>

#include <ctime>
#include <initializer_list>

namespace tallyview {

namespace {

QByteArray firstSet(std::initializer_list<const char *> variables) {
    for (const char *variable : variables) {
        if (const QByteArray value = qgetenv(variable); !value.isEmpty()) {
            return value;
        }
    }
    return {};
}

/// Whether `locale` stands for no language, whatever its encoding.
bool isPosix(const QByteArray &locale) {
    const QByteArray name = locale.split('.').constFirst();
    return name.isEmpty() || name == "C" || name == "POSIX";
}

} // namespace

UtcOffset userUtcOffset() {
    tzset();
    return [](qint64 unixSeconds) -> qint64 {
        const std::time_t time = unixSeconds;
        std::tm local{};
        return localtime_r(&time, &local) ? local.tm_gmtoff : 0;
    };
}

QByteArray userNumberLocale() {
    const QByteArray locale = firstSet({"LC_ALL", "LC_NUMERIC", "LANG"});
    return isPosix(locale) ? QByteArray("zh_CN") : locale;
}

} // namespace tallyview
