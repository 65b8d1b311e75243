#include "demo/SampleRandom.h"

#include <algorithm>
#include <bit>

namespace tallyview::demo {
namespace {

std::uint64_t mixed(std::uint64_t value) {
    value = (value ^ (value >> 31)) * 0x9E37'79B9'7F4A'7C15U;
    value = (value ^ (value >> 29)) * 0xD6E8'FEB8'6659'FD93U;
    return value ^ (value >> 32);
}

} // namespace

SampleRandom::SampleRandom(std::uint64_t seed, std::uint64_t stream)
    : m_engine(mixed(mixed(seed + 1) + stream)) {}

std::int64_t SampleRandom::between(std::int64_t low, std::int64_t high) {
    return low + static_cast<std::int64_t>(below(static_cast<std::uint64_t>(high - low) + 1));
}

std::int64_t SampleRandom::skewed(std::int64_t low, std::int64_t high) {
    const auto doublings = std::bit_width(static_cast<std::uint64_t>(high / low));
    const std::int64_t floor = low << below(static_cast<std::uint64_t>(doublings));
    return between(floor, std::min(high, floor * 2 - 1));
}

} // namespace tallyview::demo
