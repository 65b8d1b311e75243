#include "core/OrvikThreadStore.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tallyview {
namespace {

constexpr std::size_t pageSize = 512;

/// Small pages: the header and the schema fill one, rows lie in trees and chains of pages.
constexpr const char *content =
    "CREATE TABLE threads (id PRIMARY KEY, title, preview, cwd, source, model, reasoning_effort,"
    " git_branch, tokens_used, created_at, created_at_ms, updated_at, updated_at_ms, recency_at,"
    " recency_at_ms, archived, agent_role, agent_path, rollout_path);"
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 40)"
    "INSERT INTO threads (id, title, preview, cwd, updated_at_ms)"
    " SELECT 't' || i, hex(zeroblob(i)), hex(zeroblob(60 * (i % 20))), '/src', 9 * i FROM n;";

/// How many threads the database library itself reads; nothing when it fails.
std::optional<std::size_t> plainCount(const std::string &path) {
    constexpr const char *query =
        "SELECT id, title, preview, cwd, source, model, reasoning_effort, git_branch, tokens_used,"
        " created_at, created_at_ms, updated_at, updated_at_ms, recency_at, recency_at_ms,"
        " archived, agent_role, agent_path, rollout_path FROM threads NOT INDEXED";
    const auto countRow = [](void *count, int, char **, char **) {
        ++*static_cast<std::size_t *>(count);
        return 0;
    };
    sqlite3 *connection = nullptr;
    std::size_t count = 0;
    sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READONLY, nullptr);
    const int code = sqlite3_exec(connection, query, countRow, &count, nullptr);
    sqlite3_close(connection);
    return code == SQLITE_OK ? std::optional(count) : std::nullopt;
}

/// A file that is damaged in place and mended again.
class Victim {
public:
    explicit Victim(std::string path) : m_path(std::move(path)) {
        std::ifstream file(m_path, std::ios::binary);
        m_whole.assign(std::istreambuf_iterator<char>(file), {});
    }

    std::string_view whole() const { return m_whole; }
    void overwrite(std::size_t offset, std::string_view bytes) const {
        std::fstream(m_path, std::ios::in | std::ios::out | std::ios::binary)
                .seekp(static_cast<std::streamoff>(offset))
            << bytes;
    }
    void truncate(std::size_t size) const { std::filesystem::resize_file(m_path, size); }
    void mend() const { overwrite(0, m_whole); }

private:
    std::string m_path;
    std::string m_whole;
};

struct Sample {
    const char *journalMode;
    bool hasLog; ///< what was written is still in the log beside the database
};

/// Whatever ends the test program leaves the damaged files behind in its folder.
class DamagedDatabaseTest : public testing::TestWithParam<Sample> {
protected:
    DamagedDatabaseTest() {
        std::string written = folder.path("written");
        sqlite3 *writer = nullptr;
        sqlite3_open(written.c_str(), &writer);
        const std::string sql = "PRAGMA page_size = " + std::to_string(pageSize) +
                                "; PRAGMA journal_mode = " + GetParam().journalMode + ";" + content;
        EXPECT_EQ(sqlite3_exec(writer, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        if (!GetParam().hasLog) {
            sqlite3_close(std::exchange(writer, nullptr));
        }
        for (const std::string suffix : {"", "-wal"}) {
            if (std::filesystem::exists(written + suffix)) {
                std::filesystem::copy_file(written + suffix, path + suffix);
                files.emplace_back(path + suffix);
            }
        }
        sqlite3_close(writer);
    }
    ~DamagedDatabaseTest() override { alarm(0); }

    /// Where the library fails, the store has to tell so; otherwise it lists every row.
    void expectAnAnswer(const std::string &damage) const {
        constexpr unsigned hang = 20;
        alarm(hang);
        const auto threads = OrvikThreadStore(path).listThreads();
        const auto expected = plainCount(path);
        ASSERT_EQ(threads.has_value(), expected.has_value())
            << damage << (threads ? "" : threads.error().text());
        ASSERT_TRUE(threads ? threads->size() == *expected : !threads.error().text().empty())
            << damage;
    }

    tests::TemporaryHome folder;
    std::string path = folder.path("state.sqlite");
    std::vector<Victim> files;
};

TEST_P(DamagedDatabaseTest, everyBitOfHeaderAndSchema) {
    const Victim &file = files.back();
    for (std::size_t bit = 0; bit < pageSize * 8; ++bit) {
        char byte = file.whole()[bit / 8];
        byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << (bit % 8)));
        file.overwrite(bit / 8, {&byte, 1});
        ASSERT_NO_FATAL_FAILURE(expectAnAnswer("bit " + std::to_string(bit)));
        file.overwrite(bit / 8, file.whole().substr(bit / 8, 1));
    }
}

TEST_P(DamagedDatabaseTest, damageOfManyKinds) {
    std::mt19937 random(1); // NOLINT(*-msc51-cpp): the same damage in every run
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int round = 0; round < 1000; ++round) {
        const Victim &file = files[below(files.size())];
        const std::size_t at = below(file.whole().size());
        const std::size_t page = at / pageSize * pageSize;
        const std::array words{std::string(2, '\0'), std::string(4, '\xFF'),
                               std::string("\x7F\xFF\xFF\xFF"), std::string(9, '\x81')};
        std::string noise(1 + below(64), ' ');
        std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
        switch (below(5)) {
        case 0:
            file.truncate(at);
            break;
        case 1:
            file.overwrite(page, std::string(pageSize, '\0'));
            break;
        case 2:
            file.overwrite(page, file.whole().substr(
                                     below(file.whole().size() / pageSize) * pageSize, pageSize));
            break;
        case 3:
            file.overwrite(at, words[below(words.size())]);
            break;
        default:
            file.overwrite(at, noise);
        }
        ASSERT_NO_FATAL_FAILURE(expectAnAnswer("round " + std::to_string(round)));
        file.truncate(0);
        file.mend();
    }
}

INSTANTIATE_TEST_SUITE_P(Journals, DamagedDatabaseTest,
                         testing::Values(Sample{"DELETE", false}, Sample{"WAL", false},
                                         Sample{"WAL", true}),
                         [](const auto &sample) {
                             return std::string(sample.param.journalMode) +
                                    (sample.param.hasLog ? "Log" : "");
                         });

} // namespace
} // namespace tallyview
