#pragma once

#include "core/ThreadRecord.h"

#include <expected>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallyview {

/// Threads by the beginnings of their ids.
class ShortIDs {
public:
    /// The records outlive this object.
    explicit ShortIDs(std::span<const ThreadRecord> threads);

    /// The shortest beginning of `id`, eight bytes at least, that no other thread's id has.
    std::string_view of(std::string_view id) const;

private:
    std::vector<std::string_view> m_sorted;
};

/// The one thread whose id is `beginning` or, where none is, begins with it. The error, one line
/// for people: that there is none, or which there are.
std::expected<ThreadRecord, std::string> findThread(std::span<const ThreadRecord> threads,
                                                    std::string_view beginning);

} // namespace tallyview
