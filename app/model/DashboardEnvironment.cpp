#include "app/model/DashboardEnvironment.h"

namespace tallyview {

Instant systemNow() { return std::chrono::system_clock::now(); }

QLocale userCollation() {
    const QLocale collation = QLocale::system().collation();
    return collation.language() == QLocale::C ? QLocale(QLocale::Chinese) : collation;
}

} // namespace tallyview
