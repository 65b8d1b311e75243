#pragma once

#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unistd.h>

namespace tallyview {

/// A file in memory; goes with what a database library may have put beside it.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes) {
        const int descriptor = mkstemp(m_path.data());
        m_isWhole =
            write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
        close(descriptor);
    }
    ~MemoryFile() {
        for (const char *suffix : {"", "-journal", "-shm", "-wal"}) {
            unlink((m_path + suffix).c_str());
        }
    }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    bool isWhole() const { return m_isWhole; }
    const std::string &path() const { return m_path; }

private:
    std::string m_path = "/dev/shm/tallyview-fuzz-XXXXXX";
    bool m_isWhole = false;
};

} // namespace tallyview
