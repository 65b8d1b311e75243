// Reading all threads of a home, and masking their texts, against floors that do nothing else.
//
//   CoreBench HOME PAIR ROUNDS
//   CoreBench HOME
//
// PAIR is one of
//   - refresh: against the query and the last 512 KiB of each live rollout, nothing parsed;
//   - refresh-less: against the same with 16 KiB;
//   - unchanged: with the list known already, against the script in Python that
//     the variable SCRIPT names;
//   - redact: all titles and previews, against looking for one byte in them.
//
// Prints one line a round. The second form reads once and ends.

#include "core/OrvikThreadStore.h"
#include "core/TextSanitizer.h"

#include "bench/Pair.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

using namespace tallyview;

namespace {

/// Keeps the compiler from dropping work whose result nobody looks at.
template <class Value>
void keep(const Value &value) {
    asm volatile("" : : "r"(&value) : "memory");
}

void readTail(const char *path, std::vector<char> &buffer) {
    const int file = ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return;
    }
    const off_t size = ::lseek(file, 0, SEEK_END);
    const off_t start = std::max<off_t>(0, size - static_cast<off_t>(buffer.size()));
    keep(::pread(file, buffer.data(), buffer.size(), start));
    ::close(file);
}

constexpr const char *query = "SELECT id, title, preview, cwd, source, model, reasoning_effort,"
                              " git_branch, tokens_used, created_at, created_at_ms, updated_at,"
                              " updated_at_ms, recency_at, recency_at_ms, archived, agent_role,"
                              " agent_path, rollout_path FROM threads ORDER BY CASE"
                              " WHEN recency_at_ms > 0 THEN recency_at_ms"
                              " WHEN updated_at_ms > 0 THEN updated_at_ms"
                              " ELSE updated_at * 1000 END DESC";
constexpr int archivedColumn = 15;
constexpr int rolloutPathColumn = 18;

/// The query stepped, every column fetched, and one read of the end of every live rollout.
void readNothingMore(const std::string &database, std::size_t tail) {
    sqlite3 *connection = nullptr;
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_open_v2(database.c_str(), &connection, SQLITE_OPEN_READONLY, nullptr) ||
        sqlite3_prepare_v2(connection, query, -1, &statement, nullptr)) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(connection));
        std::exit(EXIT_FAILURE);
    }
    std::vector<char> buffer(tail);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            keep(sqlite3_column_text(statement, column));
        }
        const auto *path = sqlite3_column_text(statement, rolloutPathColumn);
        if (path != nullptr && sqlite3_column_int(statement, archivedColumn) == 0) {
            readTail(reinterpret_cast<const char *>(path), buffer);
        }
    }
    sqlite3_finalize(statement);
    sqlite3_close(connection);
}

/// Titles and previews as the database holds them.
std::vector<std::string> storedTexts(const std::string &database) {
    std::vector<std::string> texts;
    sqlite3 *connection = nullptr;
    sqlite3_stmt *statement = nullptr;
    sqlite3_open_v2(database.c_str(), &connection, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_prepare_v2(connection, "SELECT title, preview FROM threads", -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (const int column : {0, 1}) {
            if (const auto *text = sqlite3_column_text(statement, column)) {
                texts.emplace_back(reinterpret_cast<const char *>(text));
            }
        }
    }
    sqlite3_finalize(statement);
    sqlite3_close(connection);
    return texts;
}

/// What the script in Python takes, as it tells.
bench::Time pythonTime(const std::string &database) {
    const char *const script = std::getenv("SCRIPT");
    const std::string command =
        "python3 '" + std::string(script ? script : "") + "' '" + database + "'";
    std::FILE *const output = ::popen(command.c_str(), "r");
    bench::Time time;
    if (output == nullptr || std::fscanf(output, "%lf %lf", &time.wall, &time.processor) != 2 ||
        ::pclose(output) != 0) {
        std::fprintf(stderr, "The Python script failed.\n");
        std::exit(EXIT_FAILURE);
    }
    return time;
}

std::vector<ThreadRecord> list(const std::string &database,
                               const std::vector<ThreadRecord> &known = {}) {
    auto threads = OrvikThreadStore(database).listThreads(known);
    if (!threads) {
        std::fprintf(stderr, "%s\n", threads.error().description().c_str());
        std::exit(EXIT_FAILURE);
    }
    return *std::move(threads);
}

void benchRefresh(const std::string &database, int rounds, std::size_t tail) {
    bench::compare(
        rounds, [&] { list(database); }, [&] { readNothingMore(database, tail); });
}

void benchUnchanged(const std::string &database, int rounds) {
    const std::vector<ThreadRecord> known = list(database);
    bench::compare(
        rounds, [&] { list(database, known); }, [&] { return pythonTime(database); });
}

void benchRedact(const std::string &database, int rounds) {
    const std::vector<std::string> texts = storedTexts(database);
    bench::compare(
        rounds,
        [&] {
            for (const std::string &text : texts) {
                keep(TextSanitizer::redact(text));
            }
        },
        [&] {
            for (const std::string &text : texts) {
                keep(std::memchr(text.data(), '\1', text.size()));
            }
        });
}

bool benchPair(std::string_view pair, const std::string &database, int rounds) {
    if (pair == "refresh") {
        benchRefresh(database, rounds, 512 * 1024);
    } else if (pair == "refresh-less") {
        benchRefresh(database, rounds, 16 * 1024);
    } else if (pair == "unchanged") {
        benchUnchanged(database, rounds);
    } else if (pair == "redact") {
        benchRedact(database, rounds);
    } else {
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char **argv) {
    const std::string database = std::string(argc > 1 ? argv[1] : "") + "/.orvik/state_5.sqlite";
    if (argc == 2) {
        list(database);
        return EXIT_SUCCESS;
    }
    if (argc != 4 || !benchPair(argv[2], database, std::atoi(argv[3]))) {
        std::fprintf(stderr, "Usage: CoreBench HOME [PAIR ROUNDS]\n");
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
