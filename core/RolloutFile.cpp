#include "core/RolloutFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyview {

namespace {

std::optional<std::size_t> regularFileSize(int descriptor) {
    struct stat status {};
    const bool isRegular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    return isRegular ? std::optional(static_cast<std::size_t>(status.st_size)) : std::nullopt;
}

} // namespace

// The path may lead to a pipe or a terminal: opening it must neither block nor take it over.
// Checking the path first would cost as much as opening it.
RolloutFile::RolloutFile(const std::string &path) {
    if (!path.contains('\0')) {
        m_descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        m_size = regularFileSize(m_descriptor);
    }
}

RolloutFile::~RolloutFile() {
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
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
