#pragma once

#include "core/ThreadVocabulary.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tallyview {

/// A point in time: seconds since 1970-01-01 00:00:00 UTC with a fraction.
using Instant = std::chrono::sys_time<std::chrono::duration<double>>;

/// One thread of the agent, as found by one read of its database.
///
/// An immutable value: copies share their data, so copying and passing lists of records is
/// cheap and safe between threads. Texts are valid UTF-8; a record owns its own, in one piece, and
/// what it hands out of them is good for as long as it, or a copy of it, exists.
class ThreadRecord {
public:
    struct Fields {
        std::string_view id{};              ///< the agent's identifier; identity of the record
        std::string_view title{};           ///< sanitized, never empty
        std::string_view preview{};         ///< sanitized, may be empty
        std::string_view project{};         ///< display name of the project, never empty
        std::string_view projectPath{};     ///< working directory as stored; empty when unknown
        std::string_view source{};          ///< "subagent", "local" or the agent's own word
        std::string_view model{};           ///< empty when unknown
        std::string_view reasoningEffort{}; ///< empty when unknown
        std::string_view branch{};          ///< empty when unknown
        std::int64_t tokensUsed = 0;
        std::optional<Instant> createdAt{}; ///< absent when not recorded
        std::optional<Instant> updatedAt{}; ///< time of the last activity
        bool archived = false;
        bool isSubagent = false; ///< spawned by another thread of the agent
        ThreadRunState runState = ThreadRunState::completed;

        /// Byte for byte, unlike the equality of records.
        friend bool operator==(const Fields &, const Fields &) = default;
    };

    /// Copies the texts.
    explicit ThreadRecord(const Fields &fields);

    const Fields *operator->() const { return &m_data->fields; }
    const Fields &operator*() const { return m_data->fields; }

    /// Identity in lists.
    std::string_view id() const { return m_data->fields.id; }

    /// What the search looks in: title, preview, project, projectPath, branch and source joined by
    /// single blanks, lower-cased, in normalization form C. Computed once, when the record is
    /// built.
    std::string_view searchText() const { return m_data->searchText; }

    /// Equal for canonically equivalent ids. Computed once, when the record is built.
    std::size_t identityHash() const { return m_data->identityHash; }

    /// True when all fifteen fields are equal; canonically equivalent texts are equal.
    friend bool operator==(const ThreadRecord &left, const ThreadRecord &right);

    /// Equal for equal records.
    std::size_t hash() const;

private:
    struct Data {
        explicit Data(const Fields &given);
        Data(const Data &) = delete;
        Data &operator=(const Data &) = delete;
        ~Data() = default;

        Fields fields;            // whose texts lie in `texts`
        std::size_t identityHash; // here, as walks over all records look at it and the fields' end
        std::string_view searchText;
        std::string texts;
    };
    std::shared_ptr<const Data> m_data;
};

/// The index of the thread with this id in a list of distinct ids; the list's size if absent.
std::size_t positionOf(std::span<const ThreadRecord> threads, std::string_view id);

} // namespace tallyview

template <>
struct std::hash<tallyview::ThreadRecord> {
    std::size_t operator()(const tallyview::ThreadRecord &record) const { return record.hash(); }
};
