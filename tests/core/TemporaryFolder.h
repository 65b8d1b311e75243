#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <string_view>

namespace tallyview {

/// An empty folder for one test; goes with all it holds.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "tallyview-core-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        m_path = name;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

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

} // namespace tallyview
