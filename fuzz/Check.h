#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace tallyview {

inline std::string_view inputText(const std::uint8_t *data, std::size_t size) {
    return {reinterpret_cast<const char *>(data), size};
}

/// Ends the process, which the fuzzer takes for a finding, when the core breaks `promise`.
inline void check(bool isKept, const char *promise) {
    if (!isKept) {
        std::fprintf(stderr, "Broken promise: %s\n", promise);
        std::abort();
    }
}

} // namespace tallyview
