#include "core/ThreadRecord.h"

#include "core/UnicodeText.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace tallyview {

namespace {

using TextField = std::string_view ThreadRecord::Fields::*;

constexpr std::array<TextField, 9> textFields{
    &ThreadRecord::Fields::id,          &ThreadRecord::Fields::title,
    &ThreadRecord::Fields::preview,     &ThreadRecord::Fields::project,
    &ThreadRecord::Fields::projectPath, &ThreadRecord::Fields::source,
    &ThreadRecord::Fields::model,       &ThreadRecord::Fields::reasoningEffort,
    &ThreadRecord::Fields::branch};

constexpr std::array<TextField, 6> searchedFields{
    &ThreadRecord::Fields::title,   &ThreadRecord::Fields::preview,
    &ThreadRecord::Fields::project, &ThreadRecord::Fields::projectPath,
    &ThreadRecord::Fields::branch,  &ThreadRecord::Fields::source};

std::size_t sizeOf(std::span<const TextField> texts, const ThreadRecord::Fields &fields) {
    std::size_t size = 0;
    for (const TextField field : texts) {
        size += (fields.*field).size();
    }
    return size;
}

// Converts each part by itself, as most are plain ASCII and quick. The result is the same: what a
// letter becomes never depends on anything beyond a blank.
void appendSearchText(std::string &texts, const ThreadRecord::Fields &fields) {
    for (const TextField field : searchedFields) {
        appendSearchForm(texts, fields.*field);
        texts += ' ';
    }
    texts.pop_back();
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

ThreadRecord::Data::Data(const Fields &given)
    : fields(given)
    , identityHash(CanonicalHash()(given.id)) {
    texts.reserve(sizeOf(textFields, given) + sizeOf(searchedFields, given) +
                  searchedFields.size());
    for (const TextField field : textFields) {
        texts += given.*field;
    }
    appendSearchText(texts, given);
    std::string_view rest = texts; // that will not move any more
    for (const TextField field : textFields) {
        std::string_view &text = fields.*field;
        text = rest.substr(0, text.size());
        rest.remove_prefix(text.size());
    }
    searchText = rest;
}

ThreadRecord::ThreadRecord(const Fields &fields) : m_data(std::make_shared<const Data>(fields)) {}

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
