#include "core/RolloutFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyview {

namespace {

bool isRegularFile(const std::string &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

// Opening a device or a pipe can itself do something, so the path is looked at first. Should it
// change its meaning in between, what is open then has no end or cannot be read.
RolloutFile::RolloutFile(const std::string &path) {
    if (path.contains('\0') || !isRegularFile(path)) {
        return;
    }
    m_descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

RolloutFile::~RolloutFile() {
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

std::optional<std::size_t> RolloutFile::size() const {
    const off_t end = lseek(m_descriptor, 0, SEEK_END);
    return end < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(end));
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
