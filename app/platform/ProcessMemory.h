#pragma once

namespace tallyview {

/// Gives memory that was freed back to the system, where the C library would keep it for later
/// use. Takes about a millisecond. Any thread.
void returnFreedMemory();

} // namespace tallyview
