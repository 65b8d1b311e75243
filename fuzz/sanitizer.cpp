#include "core/TextSanitizer.h"
#include "core/UnicodeText.h"
#include "tests/support/PlainCore.h"

#include "fuzz/Check.h"

#include <algorithm>
#include <string>
#include <time.h>

using namespace tallyview;

namespace {

double processorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// The best of some attempts at masking `text` written so often that it has `length` bytes.
double secondsToMask(std::string_view text, std::size_t length, int attempts) {
    std::string repeated;
    while (repeated.size() < length) {
        repeated += text;
    }
    double best = 1e9;
    for (; attempts > 0; --attempts) {
        const double start = processorSeconds();
        TextSanitizer::redact(repeated);
        best = std::min(best, processorSeconds() - start);
    }
    return best;
}

/// What is quick passes. Otherwise sixteen times the text may take 64 times the time: it takes
/// 256 times as long where the time is quadratic.
bool takesLinearTime(std::string_view text) {
    return secondsToMask(text, 16'000, 1) < 0.02 ||
           secondsToMask(text, 64'000, 5) < 64 * secondsToMask(text, 4'000, 5);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string text = decodedUtf8(inputText(data, size));
    check(TextSanitizer::redact(text) == plainlyRedacted(text), "ICU masks the same");
    check(isValidUtf8(TextSanitizer::projectName(text)), "a project's name is a text");
    check(isValidUtf8(TextSanitizer::projectCode(text)), "a project's code is a text");
    check(text.empty() || takesLinearTime(text), "masking takes linear time");
    return 0;
}
