#include "demo/SampleDatabase.h"

#include <sqlite3.h>

#include <array>
#include <variant>

namespace tallyview::demo {
namespace {

using TextColumn = std::optional<std::string> SampleRow::*;
using IntegerColumn = std::optional<std::int64_t> SampleRow::*;

struct Column {
    const char *name;
    std::variant<TextColumn, IntegerColumn> member;
    const char *constraint = "";
};

constexpr std::array columns{
    Column{"id", &SampleRow::id, " PRIMARY KEY"},
    Column{"rollout_path", &SampleRow::rolloutPath},
    Column{"created_at", &SampleRow::createdAt},
    Column{"updated_at", &SampleRow::updatedAt},
    Column{"source", &SampleRow::source},
    Column{"cwd", &SampleRow::cwd},
    Column{"title", &SampleRow::title},
    Column{"preview", &SampleRow::preview},
    Column{"first_user_message", &SampleRow::firstUserMessage},
    Column{"sandbox_policy", &SampleRow::sandboxPolicy},
    Column{"approval_mode", &SampleRow::approvalMode},
    Column{"model", &SampleRow::model},
    Column{"reasoning_effort", &SampleRow::reasoningEffort},
    Column{"tokens_used", &SampleRow::tokensUsed, " DEFAULT 0"},
    Column{"turn_count", &SampleRow::turnCount, " DEFAULT 0"},
    Column{"archived", &SampleRow::archived, " DEFAULT 0"},
    Column{"git_branch", &SampleRow::gitBranch},
    Column{"git_commit", &SampleRow::gitCommit},
    Column{"cli_version", &SampleRow::cliVersion},
    Column{"agent_role", &SampleRow::agentRole},
    Column{"agent_path", &SampleRow::agentPath},
    Column{"created_at_ms", &SampleRow::createdAtMs},
    Column{"updated_at_ms", &SampleRow::updatedAtMs},
    Column{"recency_at", &SampleRow::recencyAt},
    Column{"recency_at_ms", &SampleRow::recencyAtMs},
};

struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

Statement prepared(sqlite3 *database, const std::string &sql) {
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    return Statement(statement);
}

/// `piece` of every column, with commas between.
template <class Piece>
std::string listed(Piece piece) {
    std::string text;
    for (const Column &column : columns) {
        text += (text.empty() ? "" : ", ") + piece(column);
    }
    return text;
}

std::string columnNames() {
    return listed([](const Column &column) { return std::string(column.name); });
}

std::string schema() {
    const auto definition = [](const Column &column) {
        const bool isText = std::holds_alternative<TextColumn>(column.member);
        return std::string(column.name) + (isText ? " TEXT" : " INTEGER") + column.constraint;
    };
    return "CREATE TABLE threads (" + listed(definition) +
           ");\n"
           "CREATE INDEX threads_by_update ON threads (updated_at DESC, id);\n"
           "CREATE INDEX threads_by_folder ON threads (archived, cwd);\n"
           "PRAGMA user_version = 5;\n";
}

bool hasValue(const SampleRow &row, const Column &column) {
    return std::visit([&](auto member) { return (row.*member).has_value(); }, column.member);
}

struct Binder {
    sqlite3_stmt *statement;
    int position;

    void operator()(const std::optional<std::string> &value) const {
        if (value) {
            sqlite3_bind_text64(statement, position, value->data(), value->size(), SQLITE_STATIC,
                                SQLITE_UTF8);
        }
    }
    void operator()(std::optional<std::int64_t> value) const {
        if (value) {
            sqlite3_bind_int64(statement, position, *value);
        }
    }
};

void bind(sqlite3_stmt *statement, int position, const SampleRow &row, const Column &column) {
    std::visit([&](auto member) { Binder{statement, position}(row.*member); }, column.member);
}

struct Reader {
    sqlite3_stmt *statement;
    int position;

    void operator()(std::optional<std::string> &value) const {
        const void *bytes = sqlite3_column_text(statement, position);
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, position));
        value.emplace(static_cast<const char *>(bytes), size);
    }
    void operator()(std::optional<std::int64_t> &value) const {
        value = sqlite3_column_int64(statement, position);
    }
};

SampleRow rowAt(sqlite3_stmt *statement) {
    SampleRow row;
    for (int position = 0; position < static_cast<int>(columns.size()); ++position) {
        if (sqlite3_column_type(statement, position) == SQLITE_NULL) {
            continue;
        }
        std::visit(
            [&](auto member) {
                Reader{statement, position}(row.*member);
            },
            columns[static_cast<std::size_t>(position)].member);
    }
    return row;
}

} // namespace

void SampleDatabase::Close::operator()(sqlite3 *database) const { sqlite3_close(database); }

std::expected<SampleDatabase, std::string>
SampleDatabase::connect(const std::filesystem::path &path, int flags) {
    sqlite3 *database = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &database, flags, nullptr);
    SampleDatabase result{Handle(database)};
    if (code != SQLITE_OK) {
        return std::unexpected(result.message());
    }
    sqlite3_busy_timeout(database, 30'000);
    // Sample data need not survive a power cut.
    sqlite3_exec(database, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
    return result;
}

std::expected<SampleDatabase, std::string> SampleDatabase::create(const std::filesystem::path &path,
                                                                  SampleJournal journal) {
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    for (const char *suffix : {"", "-wal", "-shm", "-journal"}) {
        std::filesystem::remove(path.string() + suffix, ignored);
    }
    auto database = connect(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (!database) {
        return database;
    }
    const std::string mode = journal == SampleJournal::wal ? "WAL" : "DELETE";
    if (auto done = database->execute("PRAGMA journal_mode = " + mode + ";\n" + schema()); !done) {
        return std::unexpected(done.error());
    }
    return database;
}

std::expected<SampleDatabase, std::string> SampleDatabase::open(const std::filesystem::path &path) {
    return connect(path, SQLITE_OPEN_READWRITE);
}

std::string SampleDatabase::message() const { return sqlite3_errmsg(m_database.get()); }

std::expected<void, std::string> SampleDatabase::execute(const std::string &sql) {
    if (sqlite3_exec(m_database.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        return std::unexpected(message());
    }
    return {};
}

std::expected<void, std::string> SampleDatabase::insert(std::span<const SampleRow> rows) {
    const std::string marks = listed([](const Column &) { return std::string("?"); });
    const Statement statement = prepared(m_database.get(), "INSERT INTO threads (" + columnNames() +
                                                               ") VALUES (" + marks + ")");
    for (const SampleRow &row : rows) {
        sqlite3_clear_bindings(statement.get());
        int position = 0;
        for (const Column &column : columns) {
            bind(statement.get(), ++position, row, column);
        }
        if (sqlite3_step(statement.get()) != SQLITE_DONE) {
            return std::unexpected(message());
        }
        sqlite3_reset(statement.get());
    }
    return {};
}

std::expected<void, std::string> SampleDatabase::change(const SampleRow &row) {
    std::string assignments;
    for (const Column &column : columns) {
        if (hasValue(row, column)) {
            assignments += (assignments.empty() ? "" : ", ") + std::string(column.name) + " = ?";
        }
    }
    const Statement statement =
        prepared(m_database.get(), "UPDATE threads SET " + assignments + " WHERE id = ?");
    int position = 0;
    for (const Column &column : columns) {
        if (hasValue(row, column)) {
            bind(statement.get(), ++position, row, column);
        }
    }
    Binder{statement.get(), ++position}(row.id);
    if (sqlite3_step(statement.get()) != SQLITE_DONE) {
        return std::unexpected(message());
    }
    return {};
}

std::expected<void, std::string> SampleDatabase::write(std::span<const SampleRow> inserted,
                                                       std::span<const SampleRow> changed) {
    std::expected<void, std::string> done = execute("BEGIN IMMEDIATE");
    if (done && !inserted.empty()) {
        done = insert(inserted);
    }
    for (const SampleRow &row : changed) {
        done = done ? change(row) : done;
    }
    if (done) {
        done = execute("COMMIT");
    }
    if (!done) {
        sqlite3_exec(m_database.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    return done;
}

std::expected<std::vector<SampleRow>, std::string> SampleDatabase::rows() {
    const Statement statement =
        prepared(m_database.get(), "SELECT " + columnNames() + " FROM threads");
    std::vector<SampleRow> result;
    int code = sqlite3_step(statement.get());
    for (; code == SQLITE_ROW; code = sqlite3_step(statement.get())) {
        result.push_back(rowAt(statement.get()));
    }
    if (code != SQLITE_DONE) {
        return std::unexpected(message());
    }
    return result;
}

std::expected<void, std::string> writeDatabase(const std::filesystem::path &path,
                                               std::span<const SampleRow> rows,
                                               SampleJournal journal) {
    auto database = SampleDatabase::create(path, journal);
    if (!database) {
        return std::unexpected(database.error());
    }
    return database->write(rows);
}

} // namespace tallyview::demo
