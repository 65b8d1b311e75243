#include "app/terminal/ShortIDs.h"

#include "core/CodePoints.h"

#include <algorithm>

namespace tallyview {

namespace {

constexpr std::size_t leastLength = 8;
constexpr std::size_t mostNamed = 5;

std::size_t commonLength(std::string_view left, std::string_view right) {
    const auto [end, other] = std::ranges::mismatch(left, right);
    return static_cast<std::size_t>(end - left.begin());
}

/// The end of the code point that the byte before `length` belongs to.
std::size_t wholeLength(std::string_view text, std::size_t length) {
    std::size_t end = 0;
    while (end < length) {
        end += codePointLength(text, end);
    }
    return end;
}

} // namespace

ShortIDs::ShortIDs(std::span<const ThreadRecord> threads) {
    m_sorted.reserve(threads.size());
    for (const ThreadRecord &thread : threads) {
        m_sorted.push_back(thread.id());
    }
    std::ranges::sort(m_sorted);
}

std::string_view ShortIDs::of(std::string_view id) const {
    const auto [first, end] = std::ranges::equal_range(m_sorted, id);
    std::size_t shared = 0;
    if (first != m_sorted.begin()) {
        shared = commonLength(id, *std::prev(first));
    }
    if (end != m_sorted.end()) {
        shared = std::max(shared, commonLength(id, *end));
    }
    return id.substr(0, wholeLength(id, std::min(id.size(), std::max(leastLength, shared + 1))));
}

std::expected<ThreadRecord, std::string> findThread(std::span<const ThreadRecord> threads,
                                                    std::string_view beginning) {
    if (const std::size_t position = positionOf(threads, beginning); position < threads.size()) {
        return threads[position];
    }
    std::vector<ThreadRecord> found;
    std::ranges::copy_if(
        threads, std::back_inserter(found),
        [&](std::string_view id) { return id.starts_with(beginning); }, &ThreadRecord::id);
    if (found.size() == 1) {
        return found.front();
    }
    if (found.empty()) {
        return std::unexpected("没有 ID 以 " + std::string(beginning) + " 开头的任务");
    }
    std::string error =
        std::to_string(found.size()) + " 个任务的 ID 以 " + std::string(beginning) + " 开头：";
    for (std::size_t i = 0; i < std::min(found.size(), mostNamed); ++i) {
        error.append(i > 0 ? "、" : "").append(found[i].id());
    }
    return std::unexpected(error + (found.size() > mostNamed ? "……" : ""));
}

} // namespace tallyview
