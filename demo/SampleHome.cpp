#include "demo/SampleHome.h"

#include "demo/Rollout.h"

namespace tallyview::demo {
namespace {

std::filesystem::path agentFolder(const std::filesystem::path &home) { return home / ".orvik"; }

std::filesystem::path marker(const std::filesystem::path &home) {
    return agentFolder(home) / "sample-home";
}

std::expected<void, std::string> prepare(const std::filesystem::path &home) {
    std::error_code error;
    if (std::filesystem::exists(agentFolder(home), error) && !isSampleHome(home)) {
        return std::unexpected(agentFolder(home).string() + " is not sample data; left alone");
    }
    std::filesystem::remove_all(agentFolder(home), error);
    if (error) {
        return std::unexpected("cannot replace " + agentFolder(home).string());
    }
    return appendText(marker(home), "This folder is sample data and may be deleted.\n");
}

bool hasFile(SampleEnding ending) {
    return ending != SampleEnding::missingFile && ending != SampleEnding::noPath;
}

SampleThread truth(const PlannedThread &thread, bool isWritten) {
    return {.id = thread.row.id.value_or(""),
            .rolloutPath = thread.row.rolloutPath.value_or(""),
            .isRunning =
                isWritten && thread.ending == SampleEnding::running && !thread.isArchived(),
            .isArchived = thread.isArchived(),
            .isSubagent = thread.isSubagent};
}

} // namespace

std::filesystem::path stateDatabase(const std::filesystem::path &home) {
    return agentFolder(home) / "state_5.sqlite";
}

bool isSampleHome(const std::filesystem::path &home) {
    std::error_code ignored;
    return std::filesystem::exists(marker(home), ignored);
}

std::expected<SampleHome, std::string> writeSampleHome(const SampleOptions &options) {
    if (auto ready = prepare(options.home); !ready) {
        return std::unexpected(ready.error());
    }
    const SampleSetting setting{.home = options.home,
                                .threads = options.threads,
                                .seed = options.seed,
                                .nowMilliseconds = options.nowSeconds * 1000};
    SampleHome home{.database = stateDatabase(options.home), .threads = {}};
    std::vector<SampleRow> rows;
    for (std::size_t index = 0; index < options.threads; ++index) {
        PlannedThread thread = plannedThread(setting, index);
        const bool isWritten = options.rollouts != SampleRollouts::none && hasFile(thread.ending);
        if (isWritten) {
            const std::string text = rolloutText(setting, index, thread, options.rollouts);
            home.rolloutBytes += text.size();
            if (auto done = appendText(thread.row.rolloutPath.value_or(""), text); !done) {
                return std::unexpected(done.error());
            }
        }
        home.threads.push_back(truth(thread, isWritten));
        rows.push_back(std::move(thread.row));
    }
    if (auto done = writeDatabase(home.database, rows, options.journal); !done) {
        return std::unexpected(done.error());
    }
    return home;
}

} // namespace tallyview::demo
