#include "app/model/DashboardEnvironment.h"

namespace tallyview {

Instant systemNow() { return std::chrono::system_clock::now(); }

} // namespace tallyview
