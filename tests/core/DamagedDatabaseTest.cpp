#include "core/OrvikThreadStore.h"
#include "tests/core/AgentDatabase.h"
#include "tests/support/TemporaryHome.h"

#include <map>
#include <optional>
#include <random>

namespace tallyview {
namespace {

constexpr std::size_t pageSize = 512;

/// How many threads the database library itself reads; nothing when it fails.
std::optional<std::size_t> plainCount(const std::string &path) {
    const std::string query = "SELECT " + columns + " FROM threads NOT INDEXED";
    sqlite3 *connection = nullptr;
    char **table = nullptr;
    int count = 0;
    sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READONLY, nullptr);
    const int code = sqlite3_get_table(connection, query.c_str(), &table, &count, nullptr, nullptr);
    sqlite3_free_table(table);
    sqlite3_close(connection);
    return code == SQLITE_OK ? std::optional(count) : std::nullopt;
}

/// The files of a database that its writer holds open; of those with a log that is most of it.
std::map<std::string, std::string> written(const std::string &journalMode) {
    const tests::TemporaryHome folder;
    const Writer writer(folder.path("state.sqlite"));
    // Small pages: the header and the schema fill one, rows lie in trees and chains of pages.
    writer.execute("PRAGMA page_size = " + std::to_string(pageSize) +
                   "; PRAGMA journal_mode = " + journalMode + ";" + schema +
                   "CREATE INDEX by_id ON threads (id);"
                   "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 40)"
                   "INSERT INTO threads (id, title, preview, cwd, updated_at_ms) SELECT "
                   "'t' || i, hex(zeroblob(i)), hex(zeroblob(60 * (i % 20))), '/src', 9 * i "
                   "FROM n;");
    std::map<std::string, std::string> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder.path())) {
        std::ifstream file(entry.path(), std::ios::binary);
        files[entry.path().filename()] = std::string(std::istreambuf_iterator<char>(file), {});
    }
    files.erase("state.sqlite-shm"); // an index of the log that every reader can make
    return files;
}

std::string damaged(const std::string &bytes, std::mt19937 &random) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    const std::size_t at = below(bytes.size());
    const std::size_t page = at / pageSize * pageSize;
    const std::size_t otherPage = below(bytes.size() / pageSize) * pageSize;
    const std::size_t length = 1 + below(9);
    std::string result = bytes;
    switch (below(6)) {
    case 0:
        return bytes.substr(0, at);
    case 1:
        return result.replace(page, pageSize, pageSize, '\0');
    case 2:
        return result.replace(page, pageSize, bytes, otherPage, pageSize);
    case 3:
        return result.replace(at, length, length, "\0\xFF\x7F\x81"[below(4)]);
    case 4:
        return result.replace(at, 1, 1, static_cast<char>(random()));
    default: // the header and the schema
        return result.replace(at % pageSize, 1, 1, static_cast<char>(random()));
    }
}

/// Where the library fails, the store has to tell so; otherwise it lists every row.
TEST(DamagedDatabase, isReadInFullOrNotAtAll) {
    std::mt19937 random(1); // NOLINT(*-msc51-cpp): the same damage in every run
    for (const char *journalMode : {"DELETE", "WAL"}) {
        const auto files = written(journalMode);
        const tests::TemporaryHome folder;
        const std::string path = folder.path("state.sqlite");
        for (int round = 0; round < 2000; ++round) {
            const auto &[broken, bytes] = *std::next(files.begin(), round % std::ssize(files));
            for (const auto &[name, whole] : files) {
                folder.write(name, name == broken ? damaged(bytes, random) : whole);
            }
            const auto threads = OrvikThreadStore(path).listThreads();
            const auto expected = plainCount(path);
            ASSERT_EQ(threads.has_value(), expected.has_value()) << journalMode << round;
            ASSERT_TRUE(threads ? threads->size() == *expected : !threads.error().text().empty());
        }
    }
}

} // namespace
} // namespace tallyview
