#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace tallyview {

/// A file opened for reading; closes itself. Not to be shared between threads.
class RolloutFile {
public:
    /// Opens whatever is at `path`; what cannot be opened, or has no end, has no size.
    explicit RolloutFile(const std::string &path);
    ~RolloutFile();
    RolloutFile(const RolloutFile &) = delete;
    RolloutFile &operator=(const RolloutFile &) = delete;

    /// In bytes, as it was when the file was opened. What is no regular file may have one too.
    std::optional<std::size_t> size() const { return m_size; }
    bool isRegular() const;

    /// Fills `bytes` from `offset` on and returns how many were there, 0 at the end of the file;
    /// nothing when the reading fails.
    std::optional<std::size_t> read(std::size_t offset, std::span<char> bytes) const;

private:
    int m_descriptor = -1;
    std::optional<std::size_t> m_size;
};

} // namespace tallyview
