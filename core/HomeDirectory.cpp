#include "core/HomeDirectory.h"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace tallyview {

namespace {

std::string recordedHomeDirectory() {
    std::array<char, 16'384> storage{};
    passwd entry{};
    passwd *found = nullptr;
    getpwuid_r(getuid(), &entry, storage.data(), storage.size(), &found);
    return found != nullptr && found->pw_dir != nullptr ? found->pw_dir : "";
}

} // namespace

std::string homeDirectory() {
    const char *const set = std::getenv("HOME");
    std::string path = set != nullptr && *set != '\0' ? set : recordedHomeDirectory();
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return path;
}

std::filesystem::path agentDatabase() {
    return std::filesystem::path(homeDirectory()) / ".orvik/state_5.sqlite";
}

} // namespace tallyview
