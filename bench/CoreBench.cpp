// Reading all threads of a home, and masking their texts, against floors that do nothing else.
//
//   CoreBench HOME ROUNDS SCRIPT
//   CoreBench HOME
//
// SCRIPT is list_threads.py. The second form reads once and ends.

#include "core/OrvikThreadStore.h"
#include "core/TextSanitizer.h"

#include "bench/Ratio.h"

#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

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

/// How many milliseconds the Python script needs, as it tells.
double pythonMilliseconds(const std::string &script, const std::string &database) {
    const std::string command = "python3 '" + script + "' '" + database + "'";
    std::FILE *const output = ::popen(command.c_str(), "r");
    double milliseconds = 0;
    if (output == nullptr || std::fscanf(output, "%lf", &milliseconds) != 1 ||
        ::pclose(output) != 0) {
        std::fprintf(stderr, "The Python script failed.\n");
        std::exit(EXIT_FAILURE);
    }
    return milliseconds;
}

void benchStore(const std::string &database, int rounds, const std::string &script) {
    const OrvikThreadStore store{database};
    const auto list = [&] {
        if (!store.listThreads()) {
            std::exit(EXIT_FAILURE);
        }
    };
    bench::compare({"listThreads()", "query, last 512 KiB read", 0.8}, rounds, list,
                   [&] { readNothingMore(database, 512 * 1024); });
    bench::compare({"listThreads()", "query, last 16 KiB read", 1.5}, rounds, list,
                   [&] { readNothingMore(database, 16 * 1024); });
    bench::compareTimes(
        {"listThreads()", "Python script", 0.1}, std::min(rounds, 3),
        [&] { return bench::millisecondsOf(list); },
        [&] { return pythonMilliseconds(script, database); });
}

void benchSanitizer(const std::string &database, int rounds) {
    const std::vector<std::string> texts = storedTexts(database);
    bench::compare(
        {"redact, all titles and previews", "one memchr pass", 20}, rounds,
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

} // namespace

int main(int argc, char **argv) {
    if (argc != 2 && argc != 4) {
        std::fprintf(stderr, "Usage: CoreBench HOME [ROUNDS SCRIPT]\n");
        return EXIT_FAILURE;
    }
    const std::string database = std::string(argv[1]) + "/.orvik/state_5.sqlite";
    if (argc == 2) {
        return OrvikThreadStore(database).listThreads() ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const int rounds = std::atoi(argv[2]);
    benchStore(database, rounds, argv[3]);
    benchSanitizer(database, rounds);
}
