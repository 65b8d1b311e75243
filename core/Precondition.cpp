#include "core/Precondition.h"

#include <cstdio>
#include <cstdlib>

namespace tallyview {

void preconditionFailure(std::string_view message) {
    std::fputs("Fatal error: ", stderr);
    std::fwrite(message.data(), 1, message.size(), stderr);
    std::fputc('\n', stderr);
    std::fflush(stderr);
    std::abort();
}

} // namespace tallyview
