#pragma once

#include <cstddef>
#include <string_view>

/// Steps through the code points of valid UTF-8, for the library's own use. Offsets in bytes.
namespace tallyview {

/// How many bytes the code point that begins at `at` takes.
constexpr std::size_t codePointLength(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// The code point that begins at `at`.
constexpr int codePointAt(std::string_view text, std::size_t at) {
    const std::size_t length = codePointLength(text, at);
    const auto byte = [&](std::size_t index) {
        return static_cast<unsigned char>(text[at + index]);
    };
    int codePoint = length == 1 ? byte(0) : byte(0) & (0x7F >> length);
    for (std::size_t index = 1; index < length; ++index) {
        codePoint = codePoint << 6 | (byte(index) & 0x3F);
    }
    return codePoint;
}

/// Where the code point that ends at `at` begins; `at` is not the text's start.
constexpr std::size_t previousCodePoint(std::string_view text, std::size_t at) {
    do {
        --at;
    } while ((static_cast<unsigned char>(text[at]) & 0xC0) == 0x80);
    return at;
}

} // namespace tallyview
