#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>

namespace tallyview::demo {

/// Pseudo-random choices that are the same on every machine: integers only, and no standard
/// distribution, since those differ between libraries.
class SampleRandom {
public:
    /// Streams of one seed are independent of each other.
    SampleRandom(std::uint64_t seed, std::uint64_t stream);

    std::uint64_t next() { return m_engine(); }
    /// 0 … bound − 1; `bound` is positive.
    std::uint64_t below(std::uint64_t bound) { return m_engine() % bound; }
    /// low … high, both included.
    std::int64_t between(std::int64_t low, std::int64_t high);
    /// low … high with every doubling equally likely: many small values, few large ones.
    /// `low` is positive.
    std::int64_t skewed(std::int64_t low, std::int64_t high);
    bool chance(unsigned permille) { return below(1000) < permille; }

    template <class T, std::size_t Extent>
    const T &pick(std::span<const T, Extent> choices) {
        return choices[below(choices.size())];
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace tallyview::demo
