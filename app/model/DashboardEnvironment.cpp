#include "app/model/DashboardEnvironment.h"

#include <QDateTime>

namespace tallyview {

Instant systemNow() { return std::chrono::system_clock::now(); }

QTimeZone userTimeZone() {
    const QDateTime now = QDateTime::currentDateTime();
    const QTimeZone named = QTimeZone::systemTimeZone();
    // Qt takes the sign of "UTC-8" for that of an offset; it is the other way round.
    const bool agrees = named.isValid() && named.offsetFromUtc(now) == now.offsetFromUtc();
    return agrees ? named : QTimeZone(now.offsetFromUtc());
}

QLocale userCollation() {
    const QLocale collation = QLocale::system().collation();
    return collation.language() == QLocale::C ? QLocale(QLocale::Chinese) : collation;
}

} // namespace tallyview
