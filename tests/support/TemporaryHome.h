#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace tallyview::tests {

/// An empty folder; goes with all it holds.
class TemporaryHome {
public:
    TemporaryHome() {
        std::string name = std::filesystem::temp_directory_path() / "tallyview-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            std::abort();
        }
        m_path = name;
    }
    ~TemporaryHome() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryHome(const TemporaryHome &) = delete;
    TemporaryHome &operator=(const TemporaryHome &) = delete;

    const std::filesystem::path &path() const { return m_path; }
    std::string path(std::string_view name) const { return m_path / name; }

    /// Writes a file and returns its path. A new file each time: some file systems wait for the
    /// disk when an old one is written over.
    std::string write(std::string_view name, std::string_view bytes) const {
        std::filesystem::remove(path(name));
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

private:
    std::filesystem::path m_path;
};

inline std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

} // namespace tallyview::tests
