#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace tallyview {

/// A regular file opened for reading; closes itself. Not to be shared between threads.
class RolloutFile {
public:
    /// Opens the file, or leaves this closed when there is no regular file that can be read.
    explicit RolloutFile(const std::string &path);
    ~RolloutFile();
    RolloutFile(const RolloutFile &) = delete;
    RolloutFile &operator=(const RolloutFile &) = delete;

    /// In bytes, now; nothing when the file is closed or cannot tell.
    std::optional<std::size_t> size() const;

    /// Fills `bytes` from `offset` on and returns how many were there, 0 at the end of the file;
    /// nothing when the reading fails.
    std::optional<std::size_t> read(std::size_t offset, std::span<char> bytes) const;

private:
    int m_descriptor = -1;
};

} // namespace tallyview
