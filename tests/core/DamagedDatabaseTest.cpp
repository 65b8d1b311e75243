#include "core/OrvikThreadStore.h"
#include "tests/core/AgentDatabase.h"
#include "tests/support/TemporaryHome.h"

#include <algorithm>
#include <optional>
#include <random>
#include <unistd.h>
#include <vector>

namespace tallyview {
namespace {

constexpr std::size_t pageSize = 512;

/// How many threads the database library itself reads; nothing when it fails.
std::optional<std::size_t> plainCount(const std::string &path) {
    const std::string query = "SELECT " + columns + " FROM threads NOT INDEXED";
    const auto countRow = [](void *count, int, char **, char **) {
        ++*static_cast<std::size_t *>(count);
        return 0;
    };
    sqlite3 *connection = nullptr;
    std::size_t count = 0;
    sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READONLY, nullptr);
    const int code = sqlite3_exec(connection, query.c_str(), countRow, &count, nullptr);
    sqlite3_close(connection);
    return code == SQLITE_OK ? std::optional(count) : std::nullopt;
}

struct Sample {
    std::string journalMode;
    bool hasLog; ///< what was written is still in the log beside the database
};

/// Whatever ends the test program leaves the damaged files behind in its folder.
class DamagedDatabaseTest : public testing::TestWithParam<Sample> {
protected:
    struct File {
        std::string name, bytes;
    };

    // Small pages: the header and the schema fill one, rows lie in trees and chains of pages.
    DamagedDatabaseTest() {
        std::optional<Writer> writer(folder.path("written"));
        writer->execute("PRAGMA page_size = " + std::to_string(pageSize) +
                        "; PRAGMA journal_mode = " + GetParam().journalMode + ";" + schema +
                        "CREATE INDEX by_id ON threads (id);"
                        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 40)"
                        "INSERT INTO threads (id, title, preview, cwd, updated_at_ms) SELECT "
                        "'t' || i, hex(zeroblob(i)), hex(zeroblob(60 * (i % 20))), '/src', 9 * i "
                        "FROM n;");
        if (!GetParam().hasLog) {
            writer.reset();
        }
        for (const std::string suffix : {"", "-wal"}) {
            if (std::ifstream file(folder.path("written" + suffix), std::ios::binary); file) {
                files.push_back({"state.sqlite" + suffix,
                                 std::string(std::istreambuf_iterator<char>(file), {})});
                folder.write(files.back().name, files.back().bytes);
            }
        }
    }
    ~DamagedDatabaseTest() override { alarm(0); }

    /// Where the library fails, the store has to tell so; otherwise it lists every row.
    void expectAnAnswer(const File &file, const std::string &damaged, std::size_t round) const {
        constexpr unsigned hang = 20;
        folder.write(file.name, damaged);
        alarm(hang);
        const auto threads = OrvikThreadStore(folder.path("state.sqlite")).listThreads();
        const auto expected = plainCount(folder.path("state.sqlite"));
        folder.write(file.name, file.bytes);
        ASSERT_EQ(threads.has_value(), expected.has_value()) << round;
        ASSERT_TRUE(threads ? threads->size() == *expected : !threads.error().text().empty())
            << round;
    }

    tests::TemporaryHome folder;
    std::vector<File> files;
};

TEST_P(DamagedDatabaseTest, everyBitOfHeaderAndSchema) {
    for (std::size_t bit = 0; bit < pageSize * 8 && !HasFatalFailure(); ++bit) {
        std::string bytes = files.back().bytes;
        const auto byte = static_cast<unsigned char>(bytes[bit / 8]);
        bytes[bit / 8] = static_cast<char>(byte ^ (1U << (bit % 8)));
        expectAnAnswer(files.back(), bytes, bit);
    }
}

TEST_P(DamagedDatabaseTest, damageOfManyKinds) {
    std::mt19937 random(1); // NOLINT(*-msc51-cpp): the same damage in every run
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (std::size_t round = 0; round < 1000 && !HasFatalFailure(); ++round) {
        const File &file = files[below(files.size())];
        std::string bytes = file.bytes;
        const std::size_t at = below(bytes.size());
        const std::size_t page = at / pageSize * pageSize;
        const std::size_t otherPage = below(bytes.size() / pageSize) * pageSize;
        const std::string word(1 + below(9), "\0\xFF\x7F\x81"[below(4)]);
        std::string noise(1 + below(64), ' ');
        std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
        switch (below(5)) {
        case 0:
            bytes.resize(at);
            break;
        case 1:
            bytes.replace(page, pageSize, pageSize, '\0');
            break;
        case 2:
            bytes.replace(page, pageSize, file.bytes, otherPage, pageSize);
            break;
        case 3:
            bytes.replace(at, word.size(), word);
            break;
        default:
            bytes.replace(at, noise.size(), noise);
        }
        expectAnAnswer(file, bytes, round);
    }
}

INSTANTIATE_TEST_SUITE_P(Journals, DamagedDatabaseTest,
                         testing::Values(Sample{"DELETE", false}, Sample{"WAL", false},
                                         Sample{"WAL", true}),
                         [](const auto &sample) {
                             return sample.param.journalMode + (sample.param.hasLog ? "Log" : "");
                         });

} // namespace
} // namespace tallyview
