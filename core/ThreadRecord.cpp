#include "core/ThreadRecord.h"

#include "core/UnicodeText.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tallyview {

namespace {

using TextField = std::string ThreadRecord::Fields::*;

constexpr std::array<TextField, 9> textFields{
    &ThreadRecord::Fields::id,          &ThreadRecord::Fields::title,
    &ThreadRecord::Fields::preview,     &ThreadRecord::Fields::project,
    &ThreadRecord::Fields::projectPath, &ThreadRecord::Fields::source,
    &ThreadRecord::Fields::model,       &ThreadRecord::Fields::reasoningEffort,
    &ThreadRecord::Fields::branch};

// Converts each part by itself, as most are plain ASCII and quick. The result is the same: what a
// letter becomes never depends on anything beyond a blank.
std::string makeSearchText(const ThreadRecord::Fields &fields) {
    const std::array parts{&fields.title,       &fields.preview, &fields.project,
                           &fields.projectPath, &fields.branch,  &fields.source};
    std::size_t size = parts.size();
    for (const std::string *part : parts) {
        size += part->size();
    }
    std::string joined;
    joined.reserve(size);
    for (const std::string *part : parts) {
        appendSearchForm(joined, *part);
        joined += ' ';
    }
    joined.pop_back();
    return joined;
}

bool sameTexts(const ThreadRecord::Fields &left, const ThreadRecord::Fields &right) {
    for (const TextField field : textFields) {
        if (!canonicallyEqual(left.*field, right.*field)) {
            return false;
        }
    }
    return true;
}

/// Combines the hashes of a value's parts into one that depends on their order.
class Hasher {
public:
    template <class Part, class Hash = std::hash<Part>>
    void feed(const Part &part, Hash hash = {}) {
        m_hash ^= hash(part) + 0x9E3779B97F4A7C15U + (m_hash << 6U) + (m_hash >> 2U);
    }

    void feed(const std::optional<Instant> &instant) {
        feed(instant ? 1 : 0);
        if (instant) {
            feed(instant->time_since_epoch().count());
        }
    }

    std::size_t result() const { return m_hash; }

private:
    std::size_t m_hash = 0;
};

} // namespace

ThreadRecord::ThreadRecord(Fields fields) {
    const std::size_t identityHash = CanonicalHash()(fields.id);
    std::string searchText = makeSearchText(fields);
    m_data =
        std::make_shared<const Data>(Data{std::move(fields), identityHash, std::move(searchText)});
}

bool operator==(const ThreadRecord &left, const ThreadRecord &right) {
    if (left.m_data == right.m_data) {
        return true;
    }
    return sameTexts(*left, *right) && left->tokensUsed == right->tokensUsed &&
           left->createdAt == right->createdAt && left->updatedAt == right->updatedAt &&
           left->archived == right->archived && left->isSubagent == right->isSubagent &&
           left->runState == right->runState;
}

std::size_t ThreadRecord::hash() const {
    const Fields &fields = m_data->fields;
    Hasher hasher;
    for (const TextField field : textFields) {
        hasher.feed(fields.*field, CanonicalHash());
    }
    hasher.feed(fields.tokensUsed);
    hasher.feed(fields.createdAt);
    hasher.feed(fields.updatedAt);
    hasher.feed(fields.archived);
    hasher.feed(fields.isSubagent);
    hasher.feed(rawValue(fields.runState));
    return hasher.result();
}

std::size_t positionOf(std::span<const ThreadRecord> threads, std::string_view id) {
    const std::size_t hash = CanonicalHash()(id);
    const auto found = std::ranges::find_if(threads, [&](const ThreadRecord &thread) {
        return thread.identityHash() == hash && canonicallyEqual(thread.id(), id);
    });
    return static_cast<std::size_t>(found - threads.begin());
}

} // namespace tallyview
