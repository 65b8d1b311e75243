#pragma once

#include "demo/Rollout.h"
#include "demo/SampleDatabase.h"
#include "demo/SampleRandom.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <string>
#include <vector>

namespace tallyview::demo {

/// An agent at work in a sample home: it starts, carries on and finishes tasks, appending to
/// rollout files first and then recording each step in one transaction, and now and then
/// begins a new thread or archives an old one. Several tasks are at work at any time.
class LiveAgent {
public:
    /// Takes over the threads that a home's database holds. Failures say what went wrong.
    static std::expected<LiveAgent, std::string> resume(const std::filesystem::path &home,
                                                        std::uint64_t seed);

    /// What happens at one moment: one task starts or ends, others carry on.
    std::expected<void, std::string> step(std::int64_t nowMilliseconds);

    /// The ids of the threads whose task is running.
    std::vector<std::string> running() const;

private:
    struct Thread {
        std::string id;
        std::filesystem::path rolloutPath;
        std::uintmax_t rolloutBytes = 0;
        std::int64_t updated = 0;
        std::int64_t tokens = 0;
        bool isTorn = false; ///< its last line was never finished
        bool isRunning = false;
        bool isArchived = false;
    };

    LiveAgent(std::filesystem::path home, std::uint64_t seed, SampleDatabase database);

    void adopt(const SampleRow &row);
    std::size_t runningCount() const;
    Thread *pick(bool isRunning, std::uintmax_t mostBytes);

    void act(std::int64_t now);
    void begin(std::int64_t now);
    void start(std::int64_t now);
    void end(std::int64_t now);
    void carryOn(std::int64_t now);
    void archive();
    Rollout rollout(std::int64_t now);
    void append(Thread &thread, std::string_view events);
    void record(Thread &thread, std::int64_t now, SampleRow changes);

    std::filesystem::path m_home;
    SampleRandom m_random;
    SampleDatabase m_database;
    std::vector<Thread> m_threads; ///< those it may work on, latest first
    std::size_t m_mostRunning = 0;

    // What the current step has done.
    std::vector<SampleRow> m_inserted;
    std::vector<SampleRow> m_changed;
    std::string m_failure;
};

} // namespace tallyview::demo
