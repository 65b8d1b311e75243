#include "core/RolloutFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyview {

// The path may lead to a pipe or a terminal: opening it must neither block nor take it over.
// Checking the path first would cost as much as opening it.
RolloutFile::RolloutFile(const std::string &path) {
    if (!path.contains('\0')) {
        m_descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        const off_t end = lseek(m_descriptor, 0, SEEK_END);
        m_size = end < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(end));
    }
}

RolloutFile::~RolloutFile() {
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

bool RolloutFile::isRegular() const {
    struct stat status {};
    return fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

std::optional<std::size_t> RolloutFile::read(std::size_t offset, std::span<char> bytes) const {
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const auto rest = bytes.subspan(filled);
        const ssize_t count =
            pread(m_descriptor, rest.data(), rest.size(), static_cast<off_t>(offset + filled));
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        filled += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return filled;
}

} // namespace tallyview
