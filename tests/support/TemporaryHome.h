#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace tallyview::tests {

/// An empty folder that lasts as long as the object.
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

private:
    std::filesystem::path m_path;
};

} // namespace tallyview::tests
