#include "core/ThreadRunStateResolver.h"

#include "tests/core/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <map>
#include <optional>
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

// A second, slow reading in plain steps. It knows its lines by their text instead of parsing.

bool isStrictUtf8(const std::string &bytes) {
    std::string decoded;
    return icu::UnicodeString::fromUTF8(bytes).toUTF8String(decoded) == bytes;
}

std::vector<std::string> slowLines(const std::string &text) {
    std::vector<std::string> lines{""};
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.compare(at, 2, "\r\n") == 0) {
            lines.back() += "\r\n";
            ++at;
        } else if (text[at] == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += text[at];
        }
    }
    std::erase(lines, "");
    return lines;
}

std::optional<ThreadRunState> slowState(std::string line) {
    const std::string blanks = " \t\r\n";
    line.erase(0, std::min(line.find_first_not_of(blanks), line.size()));
    line.erase(line.find_last_not_of(blanks) + 1);
    const std::map<std::string, ThreadRunState> known{
        {started, running}, {complete, completed}, {aborted, completed}};
    const auto found = known.find(line);
    return found == known.end() ? std::nullopt : std::optional(found->second);
}

ThreadRunState slowlyResolved(const std::string &bytes, std::size_t chunkSize) {
    std::size_t offset = bytes.size();
    std::string carry;
    while (offset > 0) {
        const std::size_t start = offset > chunkSize ? offset - chunkSize : 0;
        const std::string buffer = bytes.substr(start, offset - start) + carry;
        offset = start;
        if (!isStrictUtf8(buffer)) {
            carry = buffer;
            continue;
        }
        std::vector<std::string> lines = slowLines(buffer);
        carry = "";
        if (start > 0 && !lines.empty()) {
            carry = lines.front();
            lines.erase(lines.begin());
        }
        for (; !lines.empty(); lines.pop_back()) {
            if (const auto state = slowState(lines.back())) {
                return *state;
            }
        }
    }
    return completed;
}

TEST_F(ThreadRunStateResolverTest, agreesWithThePlainStepsOnRandomFiles) {
    const std::vector<std::string> parts{started, complete, aborted, R"({"type":"任务","n":"😀é"})",
                                         "\n",    "\n",     "\n",    "\n",
                                         "\n",    "\n\n\n", "\r\n",  "\r",
                                         " ",     "任",     "{\"a",  "\xE4"};
    std::mt19937 random(7);
    int runningCount = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes;
        for (std::size_t count = random() % 12; count > 0; --count) {
            // Broken bytes and carriage returns spoil whole files, so they come seldom.
            const std::size_t choices = random() % 4 == 0 ? parts.size() : 10;
            bytes += parts[random() % choices];
        }
        const std::size_t chunkSize = 1 + random() % 64;
        const ThreadRunState expected = slowlyResolved(bytes, chunkSize);
        ASSERT_EQ(resolved(bytes, chunkSize), expected)
            << chunkSize << ' ' << testing::PrintToString(bytes);
        runningCount += expected == running ? 1 : 0;
    }
    EXPECT_GT(runningCount, 2'000);
}

} // namespace
} // namespace tallyview
