#include "core/RolloutFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyview {

namespace {

bool isRegular(const struct stat &status) { return S_ISREG(status.st_mode); }

bool isRegularFile(const std::string &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && isRegular(status);
}

bool isRegularFile(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && isRegular(status);
}

} // namespace

// Opening a device or a pipe can itself do something, so the path is looked at first. What is
// open in the end is looked at again: the path may have changed its meaning in between.
RolloutFile::RolloutFile(const std::string &path) {
    if (path.contains('\0') || !isRegularFile(path)) {
        return;
    }
    m_descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (m_descriptor >= 0 && !isRegularFile(m_descriptor)) {
        close(m_descriptor);
        m_descriptor = -1;
    }
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

std::optional<std::string> RolloutFile::read(std::size_t offset, std::size_t length) const {
    std::string bytes(length, '\0');
    std::size_t filled = 0;
    while (filled < length) {
        const ssize_t count = pread(m_descriptor, bytes.data() + filled, length - filled,
                                    static_cast<off_t>(offset + filled));
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        filled += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    bytes.resize(filled);
    return bytes;
}

} // namespace tallyview
