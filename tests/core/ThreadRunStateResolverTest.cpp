#include "core/ThreadRunStateResolver.h"

#include "tests/core/TemporaryFolder.h"
#include "tests/support/PlainRunStateResolver.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace tallyview {
namespace {

const std::string started = R"({"type":"event_msg","payload":{"type":"task_started"}})";
const std::string complete = R"({"type":"event_msg","payload":{"type":"task_complete"}})";
const std::string aborted = R"({"type":"event_msg","payload":{"type":"turn_aborted"}})";

constexpr auto running = ThreadRunState::running;
constexpr auto completed = ThreadRunState::completed;

class ThreadRunStateResolverTest : public testing::Test {
protected:
    ThreadRunState resolved(std::string_view bytes,
                            std::size_t chunkSize = ThreadRunStateResolver::defaultChunkSize) {
        return ThreadRunStateResolver(chunkSize).resolve(folder.write("rollout", bytes), false);
    }

    TemporaryFolder folder;
};

TEST_F(ThreadRunStateResolverTest, takesTheLatestDecidingEvent) {
    const std::string other = R"({"type":"response_item","payload":{"text":"任务"}})";
    const std::vector<std::pair<std::string, ThreadRunState>> cases{
        {started, running},
        {started + "\n", running},
        {complete + "\n" + complete + "\n" + started + "\n" + other + "\n", running},
        {started + "\n" + aborted + "\n", completed},
        {started + "\n" + complete.substr(0, 30), running},
        {started + "\n" + complete.substr(0, 30) + "\xE4\xBB", completed},
        {"\n\n" + started + "\n\n\n", running},
        {other + "\n", completed},
        {"\xFF\n" + started + "\n", completed},
        {started + "\r\n", running},
        {other + "\r\n" + started + "\r\n", completed},
        {started + "\r\r\n" + other + "\n" + aborted + "\n" + started + "\r\n", running},
        {"\uFEFF" + started + "\n", completed},
        {"\n", completed},
        {"", completed},
    };
    for (const auto &[bytes, state] : cases) {
        EXPECT_EQ(resolved(bytes), state) << testing::PrintToString(bytes);
    }
}

TEST_F(ThreadRunStateResolverTest, readsBackwardsPieceByPiece) {
    const std::string filler = std::string(600, ' ') + '\n';
    const std::string lines = started + '\n' + filler + filler;
    for (const std::size_t chunkSize : {1U, 7U, 64U, 511U, 600U, 601U, 602U, 4096U}) {
        EXPECT_EQ(resolved(lines, chunkSize), running) << chunkSize;
    }
    EXPECT_EQ(resolved(started, 0), completed);
    EXPECT_EQ(resolved(started, std::string::npos), running);
    const std::string farAway = started + "\n" + std::string(3'000'000, '\n') + "{}\n";
    EXPECT_EQ(resolved(farAway), running);
}

TEST_F(ThreadRunStateResolverTest, examinesTheFirstLineOfTheFirstPieceOnly) {
    for (const std::size_t excess : {0U, 1U, 2U}) {
        const std::size_t size = ThreadRunStateResolver::defaultChunkSize + excess;
        const std::string rest(size - started.size() - 1, ' ');
        EXPECT_EQ(resolved(started + "\n" + rest), running) << excess;
    }
}

TEST_F(ThreadRunStateResolverTest, joinsALineToTheOneBeforeWhenAPieceBeginsWithItsLineFeed) {
    EXPECT_EQ(resolved(started + "\n\n" + started, started.size() + 1), running);
    const std::string joined = aborted + "\n" + started;
    EXPECT_EQ(resolved(joined, started.size() + 1), completed);
    EXPECT_EQ(resolved(joined, started.size()), running);
}

TEST_F(ThreadRunStateResolverTest, needsAReadableRegularFile) {
    const std::string file = folder.write("file", started);
    const std::string pipe = folder.path("pipe");
    const std::string socketPath = folder.path("socket");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    socketPath.copy(address.sun_path, sizeof address.sun_path - 1);
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    std::filesystem::create_symlink(file, folder.path("link"));
    const auto before = openDescriptors();
    const ThreadRunStateResolver resolver;
    EXPECT_EQ(resolver.resolve(file, false), running);
    EXPECT_EQ(resolver.resolve(folder.path("link"), false), running);
    EXPECT_EQ(resolver.resolve(file, true), completed);
    for (const std::string &path : {std::string(), folder.path("missing"), folder.path("."), pipe,
                                    socketPath, std::string("/dev/null"), std::string("/dev/zero"),
                                    "file://" + file, file + "/", file + std::string("\0x", 2)}) {
        EXPECT_EQ(resolver.resolve(path, false), completed) << path;
    }
    EXPECT_EQ(openDescriptors(), before);
    close(listener);
}

/// Draws files that look like rollout files gone wrong; the same ones in every run.
class FileGenerator {
public:
    std::string next(std::size_t parts, std::size_t longestFiller) {
        std::string bytes;
        // Broken bytes and carriage returns spoil whole files, so most files have none.
        const std::size_t choices = below(4) == 0 ? m_parts.size() : m_firstSpoiler;
        for (std::size_t count = below(parts); count > 0; --count) {
            bytes += m_parts[below(choices)];
            bytes += below(8) == 0 ? std::string(below(longestFiller), ' ') : "";
        }
        return bytes.substr(0, bytes.size() - (below(8) == 0 ? below(bytes.size() + 1) : 0));
    }

    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : m_random() % bound; }

private:
    const std::vector<std::string> m_parts{
        started,
        complete,
        aborted,
        started + "\n",
        complete + "\n",
        aborted + "\n",
        R"({"type":"event_msg","payload":{"\u0074ype":"task_s\u0074arted"}})",
        "\n",
        R"({"type":"event\u005Fmsg","payload":{"type":"\u0074urn_aborted"}})",
        "\n",
        R"({"type":"event_msg","payload":{"note":"\"task_started\"","type":"note\u001b"}})",
        "\n",
        R"({"type":"任务","n":"😀é"})",
        "\n",
        "\n",
        "\n\n\n",
        " ",
        std::string(2, '\0'),
        "任",
        "😀",
        "\r\n",
        "\r",
        "\n\r\n",
        "{\"a",
        "{\"type\":\"event_msg\",\r\n\"payload\":\n",
        "\xE4",
        "\xBB",
        "\x80\x80\x80\x80"};
    const std::size_t m_firstSpoiler = 20;
    std::mt19937 m_random{7};
};

struct Sizes {
    std::size_t parts;
    std::size_t longestFiller;
    std::size_t leastChunk;
    std::size_t chunkChoices;
    int rounds;
};

TEST_F(ThreadRunStateResolverTest, agreesWithThePlainStepsOnRandomFiles) {
    const std::vector<Sizes> scales{{12, 8, 1, 64, 20'000},
                                    {60, 200, 1'600, 8'000, 10'000},
                                    {60, 100'000, ThreadRunStateResolver::defaultChunkSize, 1, 60}};
    FileGenerator generator;
    for (const Sizes &sizes : scales) {
        int runningCount = 0;
        for (int round = 0; round < sizes.rounds; ++round) {
            const std::string bytes = generator.next(sizes.parts, sizes.longestFiller);
            const std::size_t chunkSize = sizes.leastChunk + generator.below(sizes.chunkChoices);
            const ThreadRunState expected = plainlyResolved(bytes, chunkSize);
            ASSERT_EQ(resolved(bytes, chunkSize), expected)
                << chunkSize << ' ' << testing::PrintToString(bytes.substr(0, 10'000));
            runningCount += expected == running ? 1 : 0;
        }
        EXPECT_GT(runningCount, sizes.rounds / 10) << sizes.leastChunk;
    }
}

TEST_F(ThreadRunStateResolverTest, agreesWithThePlainStepsWhereverAPieceBegins) {
    const std::vector<std::string> files{
        aborted + "\n" + started + "\n😀任é\n\n" + R"({"n":"é任😀"})" + "\n",
        aborted + "\n" + started + "\r\n" + "\n\n\r\n\n{}\r\n",
        started + "\n" + started.substr(0, 40) + "\n" + started.substr(40) + "\n" + complete,
        started + "\n\xE4\xBB\n" + started + "\n\xBB{}\n" + started + "\n",
        complete + "\n\n" + started + "\n任务任务任务任务任务\n任\xE5"};
    for (const std::string &bytes : files) {
        for (std::size_t length = 0; length <= bytes.size(); length += 3) {
            for (std::size_t chunkSize = 1; chunkSize <= 64; ++chunkSize) {
                const std::string file = bytes.substr(length / 2, length);
                ASSERT_EQ(resolved(file, chunkSize), plainlyResolved(file, chunkSize))
                    << chunkSize << ' ' << testing::PrintToString(file);
            }
        }
    }
}

} // namespace
} // namespace tallyview
