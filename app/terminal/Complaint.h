#pragma once

#include <string_view>

namespace tallyview {

/// Tells `text`, which may hold anything, in one line on standard error.
void complain(std::string_view text);

} // namespace tallyview
