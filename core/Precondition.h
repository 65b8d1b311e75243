#pragma once

#include <string_view>

namespace tallyview {

/// Stops the process because a caller broke a contract that nothing can repair.
///
/// Prints "Fatal error: " and the message on standard error and aborts, in release builds too.
/// May be called from any thread.
[[noreturn]] void preconditionFailure(std::string_view message);

} // namespace tallyview
