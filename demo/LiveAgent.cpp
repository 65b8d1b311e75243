#include "demo/LiveAgent.h"

#include "demo/Rollout.h"
#include "demo/SampleHome.h"
#include "demo/SampleThreads.h"

#include <algorithm>
#include <limits>

namespace tallyview::demo {
namespace {

constexpr std::size_t fewestRunning = 4;
constexpr std::size_t mostRunning = 10;
/// The agent picks one of the threads used last.
constexpr std::size_t choiceCount = 60;
/// Longer files are left alone: reading one backwards in pieces might cut a character.
constexpr std::uintmax_t longestRollout = 300'000;
/// A task in a longer one can still end.
constexpr std::uintmax_t anyLength = std::numeric_limits<std::uintmax_t>::max();

std::int64_t newest(const SampleRow &row) {
    const std::int64_t seconds = row.updatedAt.value_or(0);
    const std::int64_t milliseconds = seconds < 1'000'000'000'000 ? seconds * 1000 : seconds;
    return std::max(milliseconds, row.updatedAtMs.value_or(0));
}

} // namespace

LiveAgent::LiveAgent(std::filesystem::path home, std::uint64_t seed, SampleDatabase database)
    : m_home(std::move(home))
    , m_random(seed, 0)
    , m_database(std::move(database)) {}

std::expected<LiveAgent, std::string> LiveAgent::resume(const std::filesystem::path &home,
                                                        std::uint64_t seed) {
    if (!isSampleHome(home)) {
        return std::unexpected(home.string() + " is not a sample home");
    }
    auto database = SampleDatabase::open(stateDatabase(home));
    if (!database) {
        return std::unexpected(database.error());
    }
    auto rows = database->rows();
    if (!rows) {
        return std::unexpected(rows.error());
    }
    LiveAgent agent(home, seed, std::move(*database));
    std::ranges::for_each(*rows, [&](const SampleRow &row) { agent.adopt(row); });
    std::ranges::stable_sort(agent.m_threads, std::greater(), &Thread::updated);
    agent.m_mostRunning = std::max(mostRunning, agent.runningCount());
    return agent;
}

void LiveAgent::adopt(const SampleRow &row) {
    std::error_code error;
    const std::filesystem::path path = row.rolloutPath.value_or("");
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    const bool isArchived = row.archived.value_or(0) != 0;
    if (error || size > longestRollout || isArchived) {
        return;
    }
    const RolloutTail tail = rolloutTail(path);
    m_threads.push_back({.id = row.id.value_or(""),
                         .rolloutPath = path,
                         .rolloutBytes = size,
                         .updated = newest(row),
                         .tokens = row.tokensUsed.value_or(0),
                         .isTorn = tail.isTorn,
                         .isRunning = tail.isInsideTask});
}

std::vector<std::string> LiveAgent::running() const {
    std::vector<std::string> ids;
    for (const Thread &thread : m_threads) {
        if (thread.isRunning) {
            ids.push_back(thread.id);
        }
    }
    return ids;
}

std::size_t LiveAgent::runningCount() const {
    return static_cast<std::size_t>(std::ranges::count(m_threads, true, &Thread::isRunning));
}

LiveAgent::Thread *LiveAgent::pick(bool isRunning, std::uintmax_t mostBytes) {
    std::vector<Thread *> choices;
    for (Thread &thread : m_threads) {
        if (thread.isRunning == isRunning && !thread.isArchived &&
            thread.rolloutBytes <= mostBytes && choices.size() < choiceCount) {
            choices.push_back(&thread);
        }
    }
    return choices.empty() ? nullptr : choices[m_random.below(choices.size())];
}

void LiveAgent::append(Thread &thread, std::string_view events) {
    std::string text(thread.isTorn ? 1 : 0, '\n');
    text += events;
    thread.isTorn = false;
    thread.rolloutBytes += text.size();
    if (auto done = appendText(thread.rolloutPath, text); !done) {
        m_failure = done.error();
    }
}

void LiveAgent::record(Thread &thread, std::int64_t now, SampleRow changes) {
    thread.tokens += m_random.skewed(100, 20'000);
    changes.id = thread.id;
    changes.tokensUsed = thread.tokens;
    touch(changes, now);
    m_changed.push_back(std::move(changes));
}

Rollout LiveAgent::rollout(std::int64_t now) {
    const auto language = m_random.chance(500) ? SampleLanguage::chinese : SampleLanguage::english;
    return {SampleRandom(m_random.next(), 0), language, now};
}

void LiveAgent::begin(std::int64_t now) {
    const SampleRow row = newThread(m_random, weightedProject(m_random), m_home, now);
    Thread thread{
        .id = row.id.value_or(""), .rolloutPath = row.rolloutPath.value_or(""), .isRunning = true};
    Rollout events = rollout(now);
    events.describeSession(row);
    events.startTask(row.firstUserMessage.value_or(""));
    append(thread, events.text());
    m_inserted.push_back(row);
    m_threads.insert(m_threads.begin(), std::move(thread));
}

void LiveAgent::start(std::int64_t now) {
    Thread *const thread = pick(false, longestRollout);
    if (thread == nullptr) {
        begin(now);
        return;
    }
    const std::string message = samplePreview(
        m_random, m_random.chance(500) ? SampleLanguage::chinese : SampleLanguage::english);
    Rollout events = rollout(now);
    events.startTask(message);
    append(*thread, events.text());
    thread->isRunning = true;
    record(*thread, now, {.preview = message});
}

void LiveAgent::end(std::int64_t now) {
    Thread *const thread = pick(true, anyLength);
    if (thread == nullptr) {
        return;
    }
    Rollout events = rollout(now);
    m_random.chance(150) ? events.abortTask() : events.completeTask();
    append(*thread, events.text());
    thread->isRunning = false;
    record(*thread, now, {});
}

void LiveAgent::carryOn(std::int64_t now) {
    Thread *const thread = pick(true, longestRollout);
    if (thread == nullptr) {
        return;
    }
    Rollout events = rollout(now);
    events.work(static_cast<std::size_t>(m_random.skewed(500, 20'000)));
    append(*thread, events.text());
    record(*thread, now, {});
}

void LiveAgent::archive() {
    if (Thread *const thread = pick(false, anyLength); thread != nullptr) {
        thread->isArchived = true;
        m_changed.push_back({.id = thread->id, .archived = 1});
    }
}

void LiveAgent::act(std::int64_t now) {
    const std::size_t running = runningCount();
    const std::uint64_t choice = m_random.below(20);
    const bool isIdle = running < fewestRunning;
    if (!isIdle && (running > m_mostRunning || choice < 8)) {
        end(now);
    } else if (isIdle || choice < 16) {
        start(now);
    } else if (choice < 18) {
        begin(now);
    } else {
        archive();
    }
}

std::expected<void, std::string> LiveAgent::step(std::int64_t nowMilliseconds) {
    m_inserted.clear();
    m_changed.clear();
    act(nowMilliseconds);
    carryOn(nowMilliseconds);
    carryOn(nowMilliseconds);
    if (!m_failure.empty()) {
        return std::unexpected(m_failure);
    }
    return m_database.write(m_inserted, m_changed);
}

} // namespace tallyview::demo
