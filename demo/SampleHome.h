#pragma once

#include "demo/SampleDatabase.h"
#include "demo/SampleThreads.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <string>
#include <vector>

namespace tallyview::demo {

struct SampleOptions {
    std::filesystem::path home; ///< absolute; made when missing
    std::size_t threads = 2000;
    std::uint64_t seed = 1;
    std::int64_t nowSeconds = 0; ///< Unix time that the ages of the threads count from
    SampleJournal journal = SampleJournal::wal;
    SampleRollouts rollouts = SampleRollouts::realistic;
};

/// What a reader of a sample home has to find out about one thread.
struct SampleThread {
    std::string id;
    std::filesystem::path rolloutPath; ///< empty when the row has none
    bool isRunning = false;            ///< an archived thread never is
    bool isArchived = false;
    bool isSubagent = false;
};

struct SampleHome {
    std::filesystem::path database;
    std::vector<SampleThread> threads;
    std::uint64_t rolloutBytes = 0; ///< size of all rollout files together
};

/// The database's place in a home.
std::filesystem::path stateDatabase(const std::filesystem::path &home);

/// Whether a home holds agent data that was written by `writeSampleHome`.
bool isSampleHome(const std::filesystem::path &home);

/// Writes the agent's data of a home: equal options give equal data, whatever the machine.
///
/// Replaces the data of an earlier sample home, but refuses a home that holds any other agent
/// data. The failure says what went wrong.
std::expected<SampleHome, std::string> writeSampleHome(const SampleOptions &options);

} // namespace tallyview::demo
