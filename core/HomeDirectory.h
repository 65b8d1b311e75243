#pragma once

#include <filesystem>
#include <string>

namespace tallyview {

/// The current user's home directory: $HOME, or what the user database says when that is unset
/// or empty. Without a trailing slash (a lone "/" stays); empty when there is none.
std::string homeDirectory();

/// Where the agent keeps its state, in that directory.
std::filesystem::path agentDatabase();

} // namespace tallyview
