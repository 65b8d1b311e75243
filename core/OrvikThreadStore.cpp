#include "core/OrvikThreadStore.h"

#include "core/ReadOnlyConnection.h"
#include "core/StoredThreads.h"
#include "core/TextSanitizer.h"
#include "core/ThreadRunStateResolver.h"
#include "core/UnicodeText.h"

#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <future>
#include <iterator>
#include <memory_resource>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <utility>

namespace tallyview {

namespace {

using Kind = OrvikThreadStoreError::Kind;

OrvikThreadStoreError failure(int code) { return {Kind::queryFailed, sqlite3_errstr(code)}; }

bool isStructured(std::string_view source) {
    return prefixCharacters(trimmedBlanks(source), 1) == "{";
}

std::string sourceLabel(std::string_view source) {
    constexpr std::size_t longestLabel = 24;
    const std::string label = lowercased(trimmed(source));
    const bool fits = !label.empty() && characterCount(label) <= longestLabel;
    return fits ? label : "local";
}

std::optional<Instant> instant(std::int64_t milliseconds) {
    if (milliseconds < 1) {
        return std::nullopt;
    }
    return Instant(Instant::duration(static_cast<double>(milliseconds) / 1000.0));
}

/// Records by their ids.
class KnownRecords {
public:
    explicit KnownRecords(std::span<const ThreadRecord> records) : m_records(&m_memory) {
        m_records.reserve(records.size());
        for (const ThreadRecord &record : records) {
            m_records.emplace(record.id(), &record);
        }
    }

    /// The known record if it has exactly these fields, else a new one.
    ThreadRecord record(const ThreadRecord::Fields &fields) const {
        const auto found = m_records.find(fields.id);
        const bool isKnown = found != m_records.end() && **found->second == fields;
        return isKnown ? *found->second : ThreadRecord(fields);
    }

private:
    std::pmr::monotonic_buffer_resource m_memory;
    std::pmr::unordered_map<std::string_view, const ThreadRecord *> m_records;
};

/// What has been worked out of a text, for the next row with the same: threads share few
/// directories and few sources.
class Memo {
public:
    template <class Work>
    std::string of(std::string_view text, Work work) {
        constexpr std::size_t longestText = 256;
        constexpr std::size_t mostTexts = 1024;
        if (text.size() > longestText) {
            return work(text);
        }
        const auto known = m_results.find(text);
        if (known != m_results.end()) {
            return known->second;
        }
        if (m_results.size() == mostTexts) {
            m_results.clear();
        }
        return m_results.emplace(text, work(text)).first->second;
    }

private:
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    std::unordered_map<std::string, std::string, Hash, std::equal_to<>> m_results;
};

/// Turns rows into records. Not to be shared between threads.
class RecordMaker {
public:
    RecordMaker(const std::string &home, const KnownRecords &known, const std::stop_token &stop)
        : m_home(home)
        , m_known(known)
        , m_stop(stop) {}

    /// Fewer than the rows if a stop is requested.
    std::vector<ThreadRecord> records(std::span<const StoredThread> rows) {
        std::vector<ThreadRecord> result;
        result.reserve(rows.size());
        for (const StoredThread &stored : rows) {
            if (m_stop.stop_requested()) {
                break;
            }
            result.push_back(record(stored));
        }
        return result;
    }

private:
    ThreadRecord record(const StoredThread &stored) {
        const std::string_view title = trimmed(stored.title);
        m_title = title.empty() ? "未命名任务" : title;
        TextSanitizer::redactInPlace(m_title);
        m_preview = trimmed(stored.preview);
        TextSanitizer::redactInPlace(m_preview);
        const std::string project = m_projects.of(stored.cwd, [this](std::string_view path) {
            return TextSanitizer::projectName(path, m_home);
        });
        const bool isSubagent =
            stored.hasAgentRole || stored.hasAgentPath || isStructured(stored.source);
        const std::string source =
            isSubagent ? "subagent" : m_sources.of(stored.source, sourceLabel);
        m_rolloutPath = stored.rolloutPath;
        return m_known.record({
            .id = stored.id,
            .title = m_title,
            .preview = m_preview,
            .project = project,
            .projectPath = stored.cwd,
            .source = source,
            .model = stored.model,
            .reasoningEffort = stored.reasoningEffort,
            .branch = stored.branch,
            .tokensUsed = stored.tokensUsed,
            .createdAt = instant(stored.createdMilliseconds),
            .updatedAt = instant(stored.updatedMilliseconds),
            .archived = stored.archived,
            .isSubagent = isSubagent,
            .runState = m_resolver.resolve(m_rolloutPath, stored.archived, m_rolloutMemory),
        });
    }

    const std::string &m_home;
    const KnownRecords &m_known;
    const std::stop_token &m_stop;
    ThreadRunStateResolver m_resolver;
    RolloutMemory m_rolloutMemory;
    Memo m_projects; // by directory
    Memo m_sources;  // labels by what is stored
    // Of one row, in the memory of those before.
    std::string m_title;
    std::string m_preview;
    std::string m_rolloutPath;
};

/// Calls `work` on this thread and on as many others as there is something to do for. Rethrows what
/// any of them throws.
void runOnThreads(std::size_t tasks, const std::function<void()> &work) {
    constexpr std::size_t mostThreads = 4;
    const std::size_t threads =
        std::min({tasks, mostThreads, std::size_t{std::thread::hardware_concurrency()}});
    std::vector<std::future<void>> others;
    try {
        while (others.size() + 1 < threads) {
            others.push_back(std::async(std::launch::async, work));
        }
    } catch (const std::system_error &) {
        // The system has no more threads to give; those that did start do all the work.
    }
    work();
    for (std::future<void> &other : others) {
        other.get();
    }
}

/// Opening and reading rollout files takes most of the time, so several threads share them. Each
/// batch is freed once its records are made: a million rows are not held twice.
std::vector<ThreadRecord> records(ThreadBatches batches, const std::string &home,
                                  const KnownRecords &known, const std::stop_token &stop) {
    std::vector<std::vector<ThreadRecord>> made(batches.size());
    std::atomic<std::size_t> next = 0;
    runOnThreads(batches.size(), [&] {
        RecordMaker maker(home, known, stop);
        for (std::size_t i = next++; i < batches.size() && !stop.stop_requested(); i = next++) {
            made[i] = maker.records(batches[i]->rows);
            batches[i].reset();
        }
    });
    std::vector<ThreadRecord> threads;
    threads.reserve(made.size() * ThreadBatch::mostRows);
    for (std::vector<ThreadRecord> &some : made) {
        std::ranges::move(some, std::back_inserter(threads));
    }
    return threads;
}

} // namespace

std::string OrvikThreadStoreError::description() const {
    switch (m_kind) {
    case Kind::databaseMissing:
        return "找不到 Orvik 状态数据库：" + m_text;
    case Kind::openFailed:
        return "无法只读打开 Orvik 数据库：" + m_text;
    case Kind::queryFailed:
        return "无法读取 Orvik 任务：" + m_text;
    }
    std::unreachable();
}

std::expected<std::vector<ThreadRecord>, OrvikThreadStoreError>
OrvikThreadStore::listThreads(std::span<const ThreadRecord> known,
                              const std::stop_token &stop) const {
    std::error_code ignored;
    const auto status = std::filesystem::status(m_databaseURL, ignored);
    if (!std::filesystem::exists(status)) {
        return std::unexpected(
            OrvikThreadStoreError(Kind::databaseMissing, decodedUtf8(m_databaseURL.native())));
    }
    using enum std::filesystem::file_type;
    if (status.type() != regular && status.type() != directory) { // opening it might block
        return std::unexpected(
            OrvikThreadStoreError(Kind::openFailed, sqlite3_errstr(SQLITE_CANTOPEN)));
    }
    auto database = ReadOnlyConnection::open(m_databaseURL, stop);
    if (!database) {
        return std::unexpected(OrvikThreadStoreError(Kind::openFailed, database.error()));
    }
    try {
        auto rows = readStoredThreads(**database);
        // The agent may be waiting for its database: let go of it before reading the rollout files.
        database->reset();
        if (!rows) {
            return std::unexpected(OrvikThreadStoreError(Kind::queryFailed, rows.error()));
        }
        auto threads = records(*std::move(rows), m_home, KnownRecords(known), stop);
        if (stop.stop_requested()) {
            return std::unexpected(failure(SQLITE_INTERRUPT));
        }
        return threads;
    } catch (const std::bad_alloc &) {
        return std::unexpected(failure(SQLITE_NOMEM));
    }
}

} // namespace tallyview
