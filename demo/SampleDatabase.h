#pragma once

#include "demo/SampleRow.h"

#include <expected>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

struct sqlite3;

namespace tallyview::demo {

/// How the database keeps its transactions.
enum class SampleJournal { wal, rollback };

/// The agent's side of its state database: it makes and changes what the dashboard only reads.
///
/// Failures are the database library's message. Waits up to 30 seconds for a lock.
class SampleDatabase {
public:
    /// Makes a new database with an empty table; a file that stands at `path` is replaced, and
    /// missing folders are made.
    static std::expected<SampleDatabase, std::string> create(const std::filesystem::path &path,
                                                             SampleJournal journal);
    /// Opens an existing database.
    static std::expected<SampleDatabase, std::string> open(const std::filesystem::path &path);

    /// One transaction: inserts rows, and in the rows of the same `id` sets those columns that
    /// `changed` has values for.
    std::expected<void, std::string> write(std::span<const SampleRow> inserted,
                                           std::span<const SampleRow> changed = {});

    /// Every row, in no particular order.
    std::expected<std::vector<SampleRow>, std::string> rows();

private:
    struct Close {
        void operator()(sqlite3 *database) const;
    };
    using Handle = std::unique_ptr<sqlite3, Close>;

    explicit SampleDatabase(Handle database) : m_database(std::move(database)) {}
    static std::expected<SampleDatabase, std::string> connect(const std::filesystem::path &path,
                                                              int flags);

    std::string message() const;
    std::expected<void, std::string> execute(const std::string &sql);
    std::expected<void, std::string> insert(std::span<const SampleRow> rows);
    std::expected<void, std::string> change(const SampleRow &row);

    Handle m_database;
};

/// Makes a database of exactly these rows at `path`, as `SampleDatabase::create` does.
std::expected<void, std::string> writeDatabase(const std::filesystem::path &path,
                                               std::span<const SampleRow> rows,
                                               SampleJournal journal = SampleJournal::wal);

} // namespace tallyview::demo
