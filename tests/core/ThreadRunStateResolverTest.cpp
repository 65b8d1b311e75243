#include "core/ThreadRunStateResolver.h"

#include "tests/support/PlainCore.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <sys/stat.h>
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

    tests::TemporaryHome folder;
};

TEST_F(ThreadRunStateResolverTest, takesTheLatestDecidingEvent) {
    const std::vector<std::pair<std::string, ThreadRunState>> cases{
        {complete + "\n\n" + started + "\n{\"text\":\"任务\"}\n", running},
        {started + "\n" + aborted + "\n", completed},
        {started + "\n" + complete.substr(0, 30) + "\xE4\xBB", completed},
        {"{}\r\n" + started + "\r\n", completed},
        {"", completed},
        {started + "\n" + std::string(3'000'000, '\n') + "{}\n", running},
    };
    for (const auto &[bytes, state] : cases) {
        EXPECT_EQ(resolved(bytes), state) << testing::PrintToString(bytes.substr(0, 200));
    }
    EXPECT_EQ(resolved(started, 0), completed);
    EXPECT_EQ(resolved(started, std::string::npos), running);
}

TEST_F(ThreadRunStateResolverTest, needsAReadableRegularFile) {
    const std::string file = folder.write("file", started);
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink(file, folder.path("link"));
    std::filesystem::create_symlink("loop", folder.path("loop"));
    const auto before = tests::openDescriptors();
    const ThreadRunStateResolver resolver;
    EXPECT_EQ(resolver.resolve(folder.path("link"), false), running);
    EXPECT_EQ(resolver.resolve(file, true), completed);
    for (const std::string &path :
         {std::string(), folder.path("missing"), folder.path("."), folder.path("loop"), pipe,
          std::string("/dev/zero"), "file://" + file, file + "/", file + std::string("\0x", 2)}) {
        EXPECT_EQ(resolver.resolve(path, false), completed) << path;
    }
    EXPECT_EQ(tests::openDescriptors(), before);
}

/// Draws files that look like rollout files gone wrong; the same ones in every run.
class FileGenerator {
public:
    std::string next(std::size_t parts, std::size_t longestFiller) {
        std::string bytes;
        // Broken bytes and carriage returns spoil whole files, so most files have none.
        const bool isSpoiled = below(4) == 0;
        for (std::size_t count = below(parts); count > 0; --count) {
            const auto &choices = isSpoiled && below(3) == 0 ? m_spoilers : m_parts;
            bytes += choices[below(choices.size())] + (below(2) == 0 ? "\n" : "");
            bytes += below(8) == 0 ? std::string(below(longestFiller), ' ') : "";
        }
        return bytes.substr(0, bytes.size() - (below(8) == 0 ? below(bytes.size() + 1) : 0));
    }

    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : m_random() % bound; }

private:
    const std::vector<std::string> m_parts{
        started, complete, aborted, "{\"n\":\"任😀é\"}", "\n\n\n", " ", std::string(2, '\0'),
        "任",    "😀"};
    const std::vector<std::string> m_spoilers{
        "\r\n", "\r",   "\n\r\n",          "{\"a", "{\"type\":\"event_msg\",\r\n\"payload\":\n",
        "\xE4", "\xBB", "\x80\x80\x80\x80"};
    std::mt19937 m_random{7};
};

TEST_F(ThreadRunStateResolverTest, agreesWithThePlainStepsOnRandomFiles) {
    struct Sizes {
        std::size_t parts, longestFiller, leastChunk, chunkChoices;
        int rounds;
    };
    constexpr std::size_t real = ThreadRunStateResolver::defaultChunkSize;
    FileGenerator generator;
    for (const Sizes &sizes : {Sizes{12, 8, 1, 64, 20'000}, Sizes{60, 200, 1'600, 8'000, 10'000},
                               Sizes{60, 100'000, real, 1, 60}}) {
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

} // namespace
} // namespace tallyview
