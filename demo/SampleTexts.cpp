#include "demo/SampleTexts.h"

#include "demo/SampleVocabulary.h"

#include <array>

namespace tallyview::demo {
namespace {

using namespace std::string_view_literals;

const Phrases &phrases(SampleLanguage language) {
    return language == SampleLanguage::english ? englishPhrases() : chinesePhrases();
}

constexpr std::array outputLines{
    "running 214 tests in 12 groups\n"sv,
    "test importer::reads_empty_file ... ok\n"sv,
    "test importer::keeps_trailing_blanks ... ok\n"sv,
    "test scheduler::survives_clock_jump ... FAILED\n"sv,
    "    at Object.render (src/views/list.tsx:118:24)\n"sv,
    "    at process.nextTick (internal/queue.js:77:11)\n"sv,
    "src/reader.cpp:412:17: note: candidate function not viable\n"sv,
    "src/reader.cpp:398:5: warning: unused variable 'limit'\n"sv,
    "diff --git a/src/retry.py b/src/retry.py\n"sv,
    "@@ -41,7 +41,12 @@ def backoff(attempt):\n"sv,
    "-    time.sleep(2 ** attempt)\n"sv,
    "+    delay = min(cap, base * 2 ** attempt)\n"sv,
    "+    time.sleep(delay + jitter())\n"sv,
    "drwxr-xr-x  4 mira mira  4096 src\n"sv,
    "-rw-r--r--  1 mira mira 18234 package-lock.json\n"sv,
    "[ 63%] Building CXX object CMakeFiles/engine.dir/index.cpp.o\n"sv,
    "{\"level\":\"info\",\"msg\":\"request done\",\"status\":200,\"ms\":17}\n"sv,
    "INFO  worker-3 picked up job 88213 (queue=default, retries=0)\n"sv,
    "WARN  slow query took 1834 ms: SELECT * FROM events WHERE day = ?\n"sv,
    "error: process exited with status 2\n"sv,
};

} // namespace

std::string sampleTitle(SampleRandom &random, SampleLanguage language) {
    const Phrases &words = phrases(language);
    std::string title(random.pick(words.actions));
    title += random.pick(words.subjects);
    title += random.pick(words.addenda);
    return title;
}

std::string samplePreview(SampleRandom &random, SampleLanguage language) {
    const Phrases &words = phrases(language);
    std::string preview(random.pick(words.openings));
    // Steps through the sentences, so that none comes twice.
    std::size_t next = random.below(words.sentences.size());
    for (std::uint64_t more = random.below(4); more > 0; --more) {
        preview += words.sentenceGap;
        preview += words.sentences[next % words.sentences.size()];
        next += 5;
    }
    return preview;
}

std::string sampleToolOutput(SampleRandom &random, std::size_t bytes) {
    std::string output;
    output.reserve(bytes + 80);
    while (output.size() < bytes) {
        output += outputLines[random.below(outputLines.size())];
    }
    return output;
}

std::string sampleHex(SampleRandom &random, std::size_t count) {
    std::string digits;
    while (digits.size() < count) {
        digits += "0123456789abcdef"[random.below(16)];
    }
    return digits;
}

std::string sampleId(SampleRandom &random, std::int64_t unixMilliseconds) {
    std::string time;
    for (int shift = 44; shift >= 0; shift -= 4) {
        time += "0123456789abcdef"[(unixMilliseconds >> shift) & 15];
    }
    const std::string rest = sampleHex(random, 18);
    return time.substr(0, 8) + "-" + time.substr(8) + "-7" + rest.substr(0, 3) + "-8" +
           rest.substr(3, 3) + "-" + rest.substr(6);
}

} // namespace tallyview::demo
